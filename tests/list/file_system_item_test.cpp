#include "list/file_system_item.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "list/file_order.h"
#include "platform/file_kind.h"
#include "platform/file_name.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;

TEST(FileSystemItem, TakesTheNameApartAtTheLastDot) {
  const struct {
    std::string name;
    std::u16string base, extension;
  } cases[] = {
      {"photo.jpg", u"photo", u"jpg"}, {"a.tar.gz", u"a.tar", u"gz"}, {"README", u"README", u""},
      {".profile", u".profile", u""},  {".a.b", u".a", u"b"},         {"trailing.", u"trailing", u""},
      {"a..b", u"a.", u"b"},           {"...", u"..", u""},           {"\xFF.\xFE", u"\uEFFF", u"\uEFFE"},
  };
  FileSystemItem item;
  for (const auto& known : cases) {
    item.set_path("/folder", known.name);
    EXPECT_EQ(item.filename(), known.base) << known.name;
    EXPECT_EQ(item.fileExtension(), known.extension) << known.name;
    EXPECT_EQ(item.disk_path(), "/folder/" + known.name);
  }
}

TEST(FileSystemItem, KnowsWhatAPathIs) {
  const TempTree tree;
  tree.make({"x.jpg", "folder/", "Thing.app/", "link -> x.jpg", "way -> folder", "dangling -> nowhere"});
  const struct {
    const char* path;
    ItemType type;
    std::optional<std::u16string> file_type;
  } cases[] = {
      {"x.jpg", ItemType::file, u"FILE"},          {"folder", ItemType::folder, u"FOLDER"},
      {"Thing.app", ItemType::folder, u"FOLDER"},  {"link", ItemType::alias, std::nullopt},
      {"dangling", ItemType::alias, std::nullopt}, {"way", ItemType::folder, u"FOLDER"},
      {"gone", ItemType::file, u"FILE"},
  };
  const FolderHandle folder = FolderHandle::open(tree.path());
  for (const auto& known : cases) {
    FileSystemItem item;
    const FileKind kind = file_kind(folder, known.path);
    item.set_type(ItemRecord{.kind = kind_bits(kind.is_folder, kind.is_alias)}.type());
    EXPECT_EQ(item.itemType(), known.type) << known.path;
    EXPECT_EQ(item.objectForKey("fileType"), known.file_type) << known.path;
  }
}

TEST(FileSystemItem, ShowsColonsAsSlashesAndTakesThemBack) {
  FileSystemItem item;
  item.set_path("/music/a:b", "c:d.mp3");
  item.setNewFilename(std::u16string_view(u"e/f.mp3"));
  EXPECT_EQ(item.objectForKey("newFilename"), u"e:f.mp3");
  EXPECT_EQ(item.displayField("newFilename"), u"e/f.mp3");
  EXPECT_EQ(item.displayField("filenameWithExtension"), u"c/d.mp3");
  EXPECT_EQ(item.displayField("fileLocation"), u"/music/a:b");
  EXPECT_EQ(item.objectForKey("filenameWithExtension"), u"c:d.mp3");
  EXPECT_EQ(item.objectForKey("fileWithPath"), u"/music/a:b/c:d.mp3");
  EXPECT_EQ(item.displayField("icon"), std::nullopt);
  EXPECT_EQ(FileSystemItem::getDisplayFilePath(u"/a:b"), u"/a/b");
}

TEST(CompareFiles, IgnoresCaseAndComparesNumbersByValue) {
  const std::u16string ascending[] = {u"",      u" x",     u"-1",     u"0",         u"1",     u"2",      u"10",
                                      u"010a",  u"a",      u"a-1",    u"a1",        u"a1b",   u"a2",     u"a10",
                                      u"a10b2", u"a10b10", u"File2",  u"file3",     u"file9", u"file10", u"file10.0",
                                      u"fileA", u"\u00E9", u"\u65E5", u"\U0001F600"};
  for (std::size_t i = 0; i < std::size(ascending); ++i) {
    for (std::size_t k = 0; k < std::size(ascending); ++k) {
      const int order = compareFiles(ascending[i], ascending[k]);
      EXPECT_EQ(order < 0, i < k) << to_utf8(ascending[i]) << " | " << to_utf8(ascending[k]);
      EXPECT_EQ(order == 0, i == k) << to_utf8(ascending[i]) << " | " << to_utf8(ascending[k]);
    }
  }
  EXPECT_EQ(compareFiles(u"IMG007.JPG", u"img7.jpg"), 0);
  EXPECT_EQ(compareFiles(u"\u00C9", u"\u00E9"), 0);
  EXPECT_LT(compareFiles(std::u16string(300, u'9'), u"1" + std::u16string(300, u'0')), 0);
}

TEST(CompareFiles, SortingIsStableAndKeepsFoldersTogether) {
  FileList files;
  const std::pair<const char*, const char*> items[] = {{"/b", "x2"}, {"/a", "x10"}, {"/A", "x2"}, {"/a", "X2"},
                                                       {"/b", "x1"}, {"/a", "x02"}, {"/A", "x1"}, {"/a10", "y"},
                                                       {"/a9", "y"}, {"/a/b", "z"}};
  for (const auto& [folder, name] : items) files.add(files.folders().intern(folder), name, 0, 0);
  sort_by_location(files);
  std::vector<std::string> order;
  for (std::size_t row = 0; row < files.size(); ++row) order.push_back(files.path(row));
  EXPECT_EQ(order, (std::vector<std::string>{"/A/x1", "/A/x2", "/a/X2", "/a/x02", "/a/x10", "/a/b/z", "/a9/y", "/a10/y",
                                             "/b/x1", "/b/x2"}));
}

// Names that compare as equal, and characters that come before "/".
TEST(CompareFiles, FoldersAreOrderedAsTheirPathsAre) {
  std::mt19937 random(11);
  const std::vector<std::string> names = {"a", "A", "a b", "a!", "a1", "a01", "a10", "\xC3\xA9", "\xC3\x89", "0"};
  for (int round = 0; round < 300; ++round) {
    FileList files;
    std::map<std::pair<std::string, std::string>, FolderId> expected;  // by key, then path
    for (int i = 0; i < 40; ++i) {
      std::string path;
      for (std::size_t depth = random() % 5; depth > 0; --depth) path += "/" + names[random() % names.size()];
      if (path.empty()) path = "/";
      const FolderId folder = files.folders().intern(path);
      files.add(folder, "x", 0, 0);
      std::string key;
      append_sort_key(path, key);
      expected[{key, path}] = folder;
    }
    const std::vector<std::uint32_t> ranks = folder_ranks(files);
    std::uint32_t rank = 0;
    for (const auto& [place, folder] : expected) ASSERT_EQ(ranks[folder], rank++) << place.second;
  }
}

}  // namespace
}  // namespace brindle
