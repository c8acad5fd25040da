#include "run/logged_list.h"

#include <gmock/gmock.h>

#include "run/undo.h"
#include "run/undone_logs.h"
#include "support/log_support.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Runs on a disk, undone and done again.
class RunAgain : public LogTree {
 public:
  /// Renames below files/ and logs it, as a run of FILES or FOLDERS would.
  void rename(const std::vector<Pair>& renames, const std::string& type = "FILES") {
    RenameLogWriter log;
    ASSERT_TRUE(log.createLogFile(logs() + "/" + getNewLogFileName(1'000'000), type).ok());
    for (const auto& [source, target] : renames) {
      std::filesystem::rename(files() + "/" + source, files() + "/" + target);
      log.addLogEntry(files() + "/" + source, files() + "/" + target);
    }
    ASSERT_TRUE(log.saveLog().ok());
    log_ = log.saved_path();
  }

  /// "path -> new name" of each row, or "path: status"; the paths below files/.
  std::vector<std::string> look(LogDirection direction) {
    disk_names_ = DiskNames();
    list_ = FileList();
    const Result<LogFile> log = readLogFile(log_);
    EXPECT_TRUE(log.ok()) << log.reason();
    unusable_ = preview_log(*log, direction, list_, disk_names_, {}).unusable;
    folders_ = is_log_of_folders(*log);
    std::vector<std::string> rows;
    for (std::size_t row = 0; row < list_.size(); ++row) {
      const std::string path = list_.path(row).substr(files().size() + 1);
      const bool carries = list_[row].carries_new_name;
      rows.push_back(carries ? path + " -> " + std::string(list_[row].proposed())
                             : path + ": " + to_utf8(list_.new_filename(row)));
    }
    return rows;
  }

  UndoResult undo(const JobControl& control = {}) {
    UndoResult result = undoRenaming(log_, control, {}, {logs(), false});
    if (result.put_away) log_ = result.log_path;
    return result;
  }

  /// The log goes on with the one of the redo.
  ApplyResult redo() {
    look(LogDirection::forth);
    const ApplyResult result = applyRenames(list_, redo_options(folders_, logs()), {});
    if (is_all_redone(list_)) {
      EXPECT_TRUE(drop_redone_log(log_, logs(), result.renamed == list_.size()));
      if (!result.log_path.empty()) log_ = result.log_path;
    }
    return result;
  }

  const std::string& log() const { return log_; }
  std::size_t unusable() const { return unusable_; }

 private:
  std::string log_;
  FileList list_;
  DiskNames disk_names_;
  bool folders_ = false;
  std::size_t unusable_ = 0;
};

struct PastRun {
  const char* what;
  const char* type;
  std::vector<std::string> files;
  std::vector<Pair> renames;
  std::vector<std::string> back;  // the rows before the undo
};

const std::vector<PastRun>& past_runs() {
  static const std::vector<PastRun> all = {
      {"files of several folders in turn",
       "FILES",
       {"a/1", "b/1", "a/2"},
       {{"a/1", "a/x1"}, {"b/1", "b/x1"}, {"a/2", "a/x2"}},
       {"a/x2 -> 2", "b/x1 -> 1", "a/x1 -> 1"}},
      {"names that step into one another's places",
       "FILES",
       {"1", "2", "3"},
       {{"3", "4"}, {"2", "3"}, {"1", "2"}},
       {"2 -> 1", "3 -> 2", "4 -> 3"}},
      {"folders before what they hold",
       "FOLDERS",
       {"o/s/t/f", "p/q/f", "p/r/"},
       {{"o", "n"}, {"p", "m"}, {"m/q", "m/qq"}, {"m/r", "m/q"}, {"n/s", "n/z"}, {"n/z/t", "n/z/u"}},
       {"n/z/u -> t", "n/z -> s", "m/q -> r", "m/qq -> q", "m -> p", "n -> o"}},
      {"what folders hold before them",
       "FOLDERS",
       {"o/s/t/f"},
       {{"o/s/t", "o/s/u"}, {"o/s", "o/z"}, {"o", "n"}},
       {"n -> o", "n/z -> s", "n/z/u -> t"}},
      {"letter case alone",
       "FILES",
       {"name.TXT", "d/e"},
       {{"name.TXT", "name.txt"}, {"d/e", "d/E"}},
       {"d/E -> e", "name.txt -> name.TXT"}},
      {"bytes of every kind",
       "FILES",
       {"\xff\x01", "a\nb/c:d"},
       {{"\xff\x01", "\xfe\x02"}, {"a\nb/c:d", "a\nb/\xee\xbe\x80"}},
       {"a\nb/\xee\xbe\x80 -> c:d", "\xfe\x02 -> \xff\x01"}},
      {"links, dangling ones too", "FILES", {"l -> nowhere", "k -> l"}, {{"l", "m"}, {"k", "n"}}, {"n -> k", "m -> l"}},
      {"names that nobody would rename to",
       "FILES",
       {"No Changes", "a"},
       {{"No Changes", "b"}, {"a", ".a.txt"}},
       {".a.txt -> a", "b -> No Changes"}},
  };
  return all;
}

TEST(LoggedList, what_was_undone_is_done_again_and_undone_again) {
  for (const PastRun& run : past_runs()) {
    SCOPED_TRACE(run.what);
    RunAgain tree;
    for (const std::string& file : run.files) tree.make({"files/" + file});
    const auto before = tree.state();
    tree.rename(run.renames, run.type);
    const auto after = tree.state();
    EXPECT_EQ(tree.look(LogDirection::back), run.back);
    EXPECT_THAT(tree.look(LogDirection::forth), ::testing::Each(::testing::EndsWith(": No Changes")));
    EXPECT_EQ(tree.state(), after) << "looking touches nothing";
    for (int round = 0; round < 2; ++round) {
      EXPECT_TRUE(tree.undo().put_away);
      EXPECT_EQ(tree.state(), before);
      EXPECT_THAT(tree.look(LogDirection::back), ::testing::Each(::testing::EndsWith(": No Changes")));
      const ApplyResult result = tree.redo();
      EXPECT_EQ(result.renamed, run.renames.size());
      EXPECT_EQ(tree.state(), after);
      EXPECT_THAT(undone_logs(tree.logs()), IsEmpty());
    }
  }
}

// Broken off after every number of entries: what has its old name already stays as it is.
TEST(LoggedList, an_undo_that_was_broken_off_is_shown_from_there) {
  for (const PastRun& run : past_runs()) {
    for (std::size_t stop = 1; stop < run.renames.size(); ++stop) {
      SCOPED_TRACE(std::string(run.what) + ", broken off after " + std::to_string(stop));
      RunAgain tree;
      for (const std::string& file : run.files) tree.make({"files/" + file});
      tree.rename(run.renames, run.type);
      std::atomic<bool> cancel = false;
      std::size_t heard = 0;
      undoRenaming(tree.log(), {&cancel, nullptr}, [&](auto&&...) { cancel = ++heard == stop; }, {tree.logs(), false});
      const std::vector<std::string> rows = tree.look(LogDirection::back);
      ASSERT_THAT(rows, SizeIs(run.back.size()));
      for (std::size_t i = stop; i < rows.size(); ++i) EXPECT_THAT(rows[i], ::testing::HasSubstr(" -> "));
      for (std::size_t i = 0; i < stop; ++i) EXPECT_THAT(rows[i], ::testing::EndsWith(": No Changes"));
    }
  }
}

TEST(LoggedList, what_stands_in_the_way_is_told_and_the_log_stays) {
  RunAgain tree;
  tree.make({"files/d/1", "files/d/2", "files/e/", "files/3"});
  const auto before = tree.state();
  tree.rename({{"d", "dd"}, {"e", "ee"}, {"dd/1", "dd/x"}, {"dd/2", "dd/y"}, {"3", "z"}}, "FOLDERS");
  ASSERT_TRUE(tree.undo().put_away);
  tree.make({"files/d/x"});
  std::filesystem::rename(tree.files() + "/3", tree.files() + "/elsewhere");
  EXPECT_THAT(tree.look(LogDirection::forth),
              ElementsAre("d -> dd", "e -> ee", "d/1: File Already Exists", "d/2 -> y", "3: Folder Not Found"));
  EXPECT_EQ(tree.redo().renamed, 3U);
  EXPECT_EQ(undone_logs(tree.logs()), std::vector<std::string>{tree.log()});
  std::filesystem::remove(tree.files() + "/dd/x");
  std::filesystem::rename(tree.files() + "/elsewhere", tree.files() + "/3");
  EXPECT_THAT(tree.look(LogDirection::forth),
              ElementsAre("dd: No Changes", "ee: No Changes", "dd/1 -> x", "dd/y: No Changes", "3 -> z"));
  EXPECT_EQ(tree.redo().renamed, 2U) << "the rest, under the folder's new name";
  EXPECT_THAT(undone_logs(tree.logs()), IsEmpty());
  for (const LogRecord& log : loadUserLogFiles(tree.logs()))
    EXPECT_TRUE(undoRenaming(tree.logs() + "/" + log.logFileName, {}, {}, {tree.logs(), false}).put_away);
  EXPECT_EQ(tree.state(), before);
}

TEST(LoggedList, a_log_that_nobody_wrote_harms_nothing) {
  RunAgain tree;
  tree.make({"files/a", "files/b/", "files/f/g/"});
  const auto before = tree.state();
  const std::string top = R"(srclocation=")" + tree.files() + R"(" tarlocation=")" + tree.files();
  std::string entries = "<file " + top + R"(/b" srcfilename="a" tarfilename="c"/>)";  // to another folder
  entries += "<file " + top + R"(/f/g" srcfilename="f" tarfilename="h"/>)";           // into itself
  entries += "<file " + top + R"(" srcfilename=".." tarfilename="x"/><file/>)";       // no entry's name; nothing at all
  entries += "<file " + top + R"(" srcfilename="b" tarfilename=")" + std::string(70'000, 'x') + R"("/>)";
  const std::string log = tree.logs() + "/Log 01-01-1990 00-00-00-5.xml";
  write_file(log, R"(<files appversion="1" type="folders">)" + entries + "</files>");
  for (const LogDirection direction : {LogDirection::forth, LogDirection::back}) {
    FileList list;
    DiskNames disk_names;
    const LoggedPreview preview = preview_log(*readLogFile(log), direction, list, disk_names, {});
    EXPECT_EQ(preview.unusable, 3U);
    EXPECT_EQ(list.renameable_count(), 0U);
    EXPECT_EQ(applyRenames(list, redo_options(true, tree.logs()), {}).renamed, 0U);
    EXPECT_FALSE(is_all_redone(list));
  }
  EXPECT_EQ(tree.state(), before);
  EXPECT_FALSE(drop_redone_log(log, tree.logs(), true)) << "it was not put away as undone";
}

// A redo that was broken off behind the round: only the log that it left tells.
TEST(LoggedList, names_that_were_passed_round_again_are_left_as_they_are) {
  const LogTree tree;
  tree.make({"files/1", "files/2", "files/3", "files/4"});
  const auto pairs = [&](std::vector<Pair> renames) {
    for (auto& [source, target] : renames) source = tree.files() + "/" + source, target = tree.files() + "/" + target;
    return renames;
  };
  const std::vector<Pair> round = {{"1", "2"}, {"2", "3"}, {"3", "1"}};
  std::vector<Pair> whole = round;
  whole.emplace_back("4", "5");
  const std::string log = *put_undone_log_away(make_log(tree.logs(), pairs(whole)), tree.logs());
  const auto look = [&] {
    FileList files;
    DiskNames disk_names;
    preview_log(*readLogFile(log), LogDirection::forth, files, disk_names, {}, logs_since_undo(log, tree.logs()));
    std::vector<std::string> names;
    for (const ItemRecord& record : files.items())
      names.push_back(std::string(record.name()) + (record.carries_new_name ? "!" : ""));
    return names;
  };
  EXPECT_THAT(look(), ElementsAre("1!", "2!", "3!", "4!"));
  ::usleep(5000);
  make_log(tree.logs(), pairs(round), 2'000'000);
  EXPECT_THAT(look(), ElementsAre("2", "3", "1", "4!"));
}

TEST(LoggedList, folders_below_folders_go_to_any_depth) {
  RunAgain tree;
  std::string path;
  std::vector<Pair> renames;
  std::string renamed;
  for (int depth = 0; depth < 150; ++depth) {
    path += depth == 0 ? "d" : "/d";
    renames.emplace_back(renamed + "d", renamed + "e");
    renamed += "e/";
  }
  tree.make({"files/" + path + "/"});
  const auto before = tree.state();
  tree.rename(renames, "FOLDERS");
  const auto after = tree.state();
  ASSERT_TRUE(tree.undo().put_away);
  EXPECT_EQ(tree.redo().renamed, renames.size());
  EXPECT_EQ(tree.state(), after);
  ASSERT_TRUE(tree.undo().put_away);
  EXPECT_EQ(tree.state(), before);
}

}  // namespace
}  // namespace brindle::test
