// The text of the lists that name files anew: what is read, what is ignored, what is written.

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <sstream>

#include "gather/list_export.h"
#include "gather/list_import.h"
#include "platform/file_name.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;

const ListTitles titles{{u"Filename", u"Dateiname"}, {u"New Filename"}, {u"Location", u"Ört"}};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
  return text;
}

class RenameList : public testing::Test {
 protected:
  /// Imports a text in which "$" is the tree's folder. The list as "name>new name" with folders relative to the tree,
  /// or the error.
  std::string import(const std::string& text, std::int32_t type = 0, bool hidden = false) {
    const Result<FileRenameItem> item = read_rename_list(replaced(text, "$", tree_.path()), type, titles);
    if (!item.ok()) return "unreadable: " + item.reason();
    if (item->paths.empty()) return "no records";
    FileList files;
    DiskNames disk_names;
    result_ = importFiles(files, *item, hidden, disk_names, {});
    return shown(files);
  }
  std::string shown(const FileList& files) const {
    std::string text;
    for (std::size_t row = 0; row < files.size(); ++row) {
      text += files.path(row) + ">" + to_utf8(files.new_filename(row));
      if (!files.reason(row).empty()) text += " (" + std::string(files.reason(row)) + ")";
      text += "|";
    }
    return replaced(text, tree_.path() + "/", "");
  }

  TempTree tree_;
  ImportResult result_;
};

TEST_F(RenameList, IsReadAsItsFormatSays) {
  tree_.make({"a", "b", "x:y", "\xFF", "sub/c"});
  const struct {
    std::string text, expected;
  } cases[] = {
      {"a\tA1\t$\nb\tB1\t$\n", "a>A1|b>B1|"},
      {"a\tA1\t$\r\nb\tB1\t$\r\n", "a>A1|b>B1|"},
      {"a\tA1\t$\rb\tB1\t$", "a>A1|b>B1|"},
      {"a\tA1\t$", "no records"},
      {"a\tA1\t$\n", "a>A1|"},
      {"", "no records"},
      {"FILENAME\tx\ty\na\tA1\t$\n", "a>A1|"},
      {"\xEF\xBB\xBF"
       "Filename\tNew Filename\tLocation\r\na\tA1\t$\n",
       "a>A1|"},
      {"?\t?\tÖRT\na\tA1\t$\n", "a>A1|"},
      {"\"filename\"\t\"\"\t\"\"\r\n\"a\"\t\"A1\"\t\"$\"\r\n", "a>A1|"},
      {"Location\tFilename\tdateiname\na\tA1\t$\n",
       "/dateiname/Location>File Not Found (the location in the list is no absolute path)|a>A1|"},
      {"one\ttab\na\tA1\t$\n", "no records"},
      {"\t\t\na\tA1\t$\n", "a>A1|"},
      {"a\tA1\t$\nfew\ta\t$\t\n\n\t\t\nb\tB1\t$", "a>A1|b>B1|"},
      {"a\tA1\t$\nb\tB1\t$\na\tA2\t$/sub/..\n", "a>A2|b>B1|"},
      {"x/y\tz/z\t$/\nc\t\n", "x:y>z:z|"},
      {"\xEE\xBF\xBF\tn\xEE\xBE\x80\t$\n", "\xFF>n\xEE\xBE\x80|"},
      {"a\t\xC2\x85"
       "A1\x0B\t\r$\r\n",
       "a>A1|"},
      {".\tA1\t$\n..\tA1\t$\n\tA1\t$\n", "no records"},
      {"x/../a\tA1\t$/sub\na\t../A1\t$\n", "sub/x:..:a>File Not Found|a>..:A1|"},
      {"a\tA1\tsub\n", "/sub/a>File Not Found (the location in the list is no absolute path)|"},
      {"a\tA1\t$\n\xC3\tb\t$\n", "unreadable: line 2 is not valid UTF-8"},
      {std::string("a\tA1\t$\n\0", 8), "unreadable: line 2 holds a NUL character"},
      {"\xFF\xFE"
       "a",
       "unreadable: it is UTF-16 text; save it as UTF-8 text with tabs"},
  };
  for (const auto& each : cases) EXPECT_EQ(import(each.text), each.expected) << each.text;
}

TEST_F(RenameList, TellsWhatBecomesOfEachItem) {
  tree_.make({"a", "b", "folder/", "No Changes", "File Not Found", "link -> a", "dead -> nothing", "Pack.app/x", ".h"});
  const struct {
    std::string text;
    std::int32_t type;
    std::string expected;
    bool renameable;
  } cases[] = {
      {"a\t\t$\n", 0, "a>No Changes|", false},
      {"a\ta\t$\n", 0, "a>No Changes|", false},
      {"a\tA\t$\n", 0, "a>A|", true},
      {"a\tb\t$\n", 0, "a>File Already Exists|", false},
      {"folder\ta\t$\n", 1, "folder>Folder Already Exists|", false},
      {"gone\tx\t$\n", 0, "gone>File Not Found|", false},
      {"gone\tx\t$/nowhere\n", 1, "nowhere/gone>Folder Not Found|", false},
      {"a/\tx\t$\n", 0, "a:>File Not Found|", false},
      {"folder\tx\t$\na\ty\t$\n", 0, "a>y|", true},
      {"folder\tx\t$\na\ty\t$\n", 1, "folder>x|", true},
      {"link\tx\t$\ndead\ty\t$\nPack.app\tz\t$\n", 0, "link>x|dead>y|Pack.app>z|", true},
      {"File Not Found\t\t$\n", 0, "File Not Found>No Changes|", false},
      {"a\tFile Not Found\t$\n", 0, "a>File Not Found|", false},
      {"a\t..\t$\n", 0, "a>No Changes (\".\" and \"..\" cannot be names)|", false},
      {"a\t" + std::string(256, 'n') + "\t$\n", 0, "a>No Changes (the new name is too long for this disk)|", false},
      {".h\tx\t$\na\tx\t$\n", 0, "a>x|", true},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(import(each.text, each.type), each.expected) << each.text;
    EXPECT_EQ(result_.isHasFilesForRenaming, each.renameable) << each.text;
  }
  EXPECT_EQ(result_.hidden_paths, 1U);
  EXPECT_EQ(result_.searchFilesCount, 1U);
  EXPECT_EQ(import(".h\tx\t$\n", 0, true), ".h>x|");
}

TEST_F(RenameList, PathsThroughLinksBecomeTheItemsOwn) {
  tree_.make({"real/a", "way -> real"});
  EXPECT_EQ(import("a\tx\t$/way\na\ty\t$/real\ngone\ty\t$/way\n"), "real/a>y|real/gone>File Not Found|");
}

TEST_F(RenameList, QuotesOfSpreadsheetsCountWhereNothingIsCalledSo) {
  tree_.make({"one, two", "say \"x\"", "\"really, quoted\""});
  EXPECT_EQ(import("\"one, two\"\t\"a, b\"\t$\n\"say \"\"x\"\"\"\ty\t\"$\"\n\"really, quoted\"\t\"c, d\"\t$\n"),
            "one, two>a, b|say \"x\">y|\"really, quoted\">\"c, d\"|");
  EXPECT_EQ(import("\"gone, too\"\tx\t$\n"), "\"gone, too\">File Not Found|");
}

TEST_F(RenameList, FilesThatAreNoTextAreRefusedByReason) {
  EXPECT_EQ(loadRenameFile(tree_ / "nothing", 0, titles).reason(), "No such file or directory");
  EXPECT_EQ(loadRenameFile(tree_.path(), 0, titles).reason(), "Is a directory");
}

TEST_F(RenameList, ImportStopsWhenItIsCancelled) {
  FileRenameItem item;
  item.add(tree_ / "a", "b");
  FileList files;
  DiskNames disk_names;
  std::atomic<bool> cancel{true};
  EXPECT_TRUE(importFiles(files, item, false, disk_names, {&cancel, nullptr}).cancelled);
  EXPECT_TRUE(files.empty());
}

class Export : public RenameList {
 protected:
  Export() {
    tree_.make({"a", "x:y", "\xFF", "deep/\xEE\xBE\x80", "deep/b"});
    const std::string list = "a\tnew\t$\nx/y\tz/z\t$\n\xEE\xBF\xBF\t\t$\nb\tn\xEE\xBE\x80\t$/deep\ngone\t\t$\n";
    importFiles(files_, *read_rename_list(replaced(list, "$", tree_.path()), 0, titles), false, disk_names_, {});
  }
  std::string exported(const ExportOptions& options) {
    const auto left_out = export_list(files_, options, {"Filename", "New Filename", "Location"}, tree_ / "out.txt", {});
    EXPECT_EQ(left_out.reason(), "");
    left_out_ = *left_out;
    return read(tree_ / "out.txt");
  }
  static std::string read(const std::string& path) {
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
  }
  FileList files_;
  DiskNames disk_names_;
  std::vector<std::uint32_t> left_out_;
};

TEST_F(Export, WritesTheColumnsAskedFor) {
  files_.remove_rows({2, 3, 4});
  files_.set_status(0, ItemStatus::none);
  const struct {
    ExportOptions options;
    std::string expected;
  } cases[] = {
      {{}, "Filename\tNew Filename\tLocation\na\t\t$\nx/y\tz/z\t$\n"},
      {{.addColumnNamesInHeader = false}, "a\t\t$\nx/y\tz/z\t$\n"},
      {{.isIncludeLocation = true}, "Filename\tNew Filename\n$/a\t$\n$/x:y\t$/z/z\n"},
      {{.isFilename = false, .isNewFilename = false}, "Location\n$\n$\n"},
      {{.isNewFilename = false, .isLocation = false, .isIncludeLocation = true}, "Filename\n$/a\n$/x:y\n"},
  };
  for (const auto& each : cases) EXPECT_EQ(replaced(exported(each.options), tree_.path(), "$"), each.expected);
  EXPECT_EQ(check_export({false, false, false, true, true}), ExportRefusal::no_column);
  EXPECT_EQ(check_export({false, false, true, true, true}), ExportRefusal::nothing_to_say);
}

TEST_F(Export, ReadsBackAsTheSameList) {
  const std::string before = shown(files_);
  EXPECT_EQ(import(exported({})), before);
  EXPECT_EQ(import(exported({.addColumnNamesInHeader = false})), before);
  EXPECT_NE(before.find("\xFF>No Changes|deep/b>n\xEE\xBE\x80|gone>File Not Found|"), std::string::npos) << before;
}

// Else the line of "two<line feed>words" names a file "words" on the way back.
TEST_F(Export, LeavesOutWhatWouldBeReadBackAsAnotherFile) {
  files_.clear();
  const std::string folder = tree_.path();
  FolderTable& folders = files_.folders();
  const FolderId here = folders.intern(folder);
  const FolderId odd = folders.intern(folder + "/o\tdd");
  for (const char* name :
       {"fine", "two\nwords", "tab\t", "\xE2\x80\xA8start", "end\xC2\x85", "middle\rof", "\xE2\x80\xA6\xC2\xA0"})
    files_.add(here, name, 0, 0);
  files_.add(odd, "fine", 0, 0);
  EXPECT_EQ(replaced(exported({.addColumnNamesInHeader = false}), folder, "$"),
            "fine\t\t$\n\xE2\x80\xA6\xC2\xA0\t\t$\n");
  EXPECT_EQ(left_out_, (std::vector<std::uint32_t>{1, 2, 3, 4, 5, 7}));
  exported({.isLocation = false});
  EXPECT_EQ(left_out_.size(), 5U) << "the odd folder is not written";
}

TEST_F(Export, ReplacesAFileOnlyWhenAllIsThere) {
  tree_.make({"old", "link -> old"});
  std::atomic<bool> cancel{true};
  EXPECT_EQ(export_list(files_, {}, {}, tree_ / "link", {&cancel, nullptr}).reason(), "");
  EXPECT_EQ(read(tree_ / "old"), "old");
  EXPECT_EQ(export_list(files_, {}, {}, tree_ / "link", {}).reason(), "");
  EXPECT_TRUE(std::filesystem::is_symlink(tree_ / "link"));
  EXPECT_TRUE(read(tree_ / "old").starts_with("\t\t\na\tnew\t"));
  EXPECT_NE(export_list(files_, {}, {}, tree_ / "deep", {}).reason(), "");
  EXPECT_NE(export_list(files_, {}, {}, tree_ / "no/folder", {}).reason(), "");
}

TEST_F(Export, WritesIntoPipesAsTheyAre) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const std::string path = "/dev/fd/" + std::to_string(ends[1]);
  EXPECT_EQ(export_list(files_, {}, {}, path, {}).reason(), "");
  char text[4096];
  EXPECT_GT(::read(ends[0], text, sizeof text), 10);
  ::close(ends[0]);
  EXPECT_NE(export_list(files_, {}, {}, path, {}).reason(), "");  // nobody reads any more
  ::close(ends[1]);
  ASSERT_EQ(::mkfifo((tree_ / "fifo").c_str(), 0600), 0);
  EXPECT_NE(export_list(files_, {}, {}, tree_ / "fifo", {}).reason(), "");
}

}  // namespace
}  // namespace brindle
