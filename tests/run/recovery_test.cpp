#include "run/recovery.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <memory>

#include "log/journal.h"
#include "log/journal_format.h"
#include "run/run_log.h"
#include "run/undo.h"
#include "support/log_support.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr JournalMark none = JournalMark::none;
constexpr JournalMark begun = JournalMark::begun;
constexpr JournalMark done = JournalMark::done;
constexpr JournalMark failed = JournalMark::failed;
constexpr JournalMark half = JournalMark::half;

/// One renaming of a run that was interrupted.
struct Step {
  std::string old_path;  ///< below files/, as the list had it
  std::string new_name;
  JournalMark mark = none;
  std::string happened = {};  ///< where the entry lay when it was renamed, if it was
  bool logged = false;        ///< whether the finished log must have it
};

struct Interrupted {
  const char* what;
  std::vector<std::string> files;
  std::vector<Step> steps;
  bool paths_follow = false;
};

const std::vector<Interrupted>& interrupted_runs() {
  static const std::vector<Interrupted> all = {
      {"marks tell",
       {"a", "b", "c", "d"},
       {{"a", "A1", done, "a", true}, {"b", "B1", failed}, {"c", "C1"}, {"d", "D1"}}},
      {"stopped before a rename", {"a", "b"}, {{"a", "A1", begun}, {"b", "B1"}}},
      {"stopped after a rename", {"a", "b"}, {{"a", "A1", begun, "a", true}, {"b", "B1"}}},
      {"target taken by another file", {"a", "A1"}, {{"a", "A1", begun}}},
      {"target is another link to the file", {"a", "A1 = a"}, {{"a", "A1", begun}}},
      {"letter case, before", {"name"}, {{"name", "Name", begun}}},
      {"letter case, after", {"name"}, {{"name", "Name", begun, "name", true}}},
      {"marks lost with the system",
       {"a", "b", "c"},
       {{"a", "A1", none, "a", true}, {"b", "B1", none, "b", true}, {"c", "C1"}}},
      {"marks that fit neither name", {"a", "b"}, {{"a", "A1", failed, "a", true}, {"b", "B1", done}}},
      {"marks ahead of the disk", {"a", "b"}, {{"a", "A1", done, "a", true}, {"b", "B1", done}}},
      {"chain, half way", {"1", "2", "3"}, {{"3", "4", none, "3", true}, {"2", "3", none, "2", true}, {"1", "2"}}},
      {"chain, not begun", {"1", "2", "3"}, {{"3", "4"}, {"2", "3"}, {"1", "2"}}},
      {"chain, finished", {"1", "2"}, {{"2", "3", none, "2", true}, {"1", "2", none, "1", true}}},
      {"other files stand in both places", {"a", "A1"}, {{"a", "A1"}}},
      {"hard links, one renamed", {"a", "b = a"}, {{"a", "A1", none, "a", true}, {"b", "B1"}}},
      {"hard link at the target", {"a", "A1 = a"}, {{"a", "A1"}}},
      {"letter case, lost marks, before", {"name"}, {{"name", "Name"}}},
      {"letter case, lost marks, after", {"name"}, {{"name", "Name", none, "name", true}}},
      {"below renamed folders",
       {"o/s/f", "o/g"},
       {{"o", "n", done, "o", true},
        {"o/g", "h", done, "n/g", true},
        {"o/s", "t", done, "n/s", true},
        {"o/s/f", "e", begun, "n/t/f", true}},
       true},
      {"below renamed folders, lost marks",
       {"o/s/f", "o/g"},
       {{"o", "n", none, "o", true}, {"o/g", "h", none, "n/g", true}, {"o/s", "t"}, {"o/s/f", "e"}},
       true},
      {"below a folder that failed", {"o/f", "n/x"}, {{"o", "n", failed}, {"o/f", "g", begun, "o/f", true}}, true},
      {"several folders", {"a/1", "b/1"}, {{"a/1", "2", done, "a/1", true}, {"b/1", "2", begun, "b/1", true}}},
      {"bytes", {"\xff", "\x01"}, {{"\xff", "\xfe", done, "\xff", true}, {"\x01", "\x02", begun, "\x01", true}}},
  };
  return all;
}

void make_files(const LogTree& tree, const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    const std::size_t link = file.find(" = ");
    if (link == std::string::npos)
      tree.make({"files/" + file});
    else
      std::filesystem::create_hard_link(tree / "files/" + file.substr(link + 3),
                                        tree / "files/" + file.substr(0, link));
  }
}

std::string folder_of(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}
std::string name_of(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

/// A journal and a "#" log as the run left them.
class CrashedRun {
 public:
  CrashedRun(const LogTree& tree, const Interrupted& run, std::time_t when = 1'000'000) {
    EXPECT_EQ(begin_run_log(tree.logs(), when, {false, run.paths_follow, "4"}, *journal_, *log_).reason(), "");
    path_ = log_->path();
    std::uint32_t folder = 0;
    for (const Step& step : run.steps) {
      const std::string path = tree / "files/" + step.old_path;
      struct stat status {};
      EXPECT_EQ(::lstat(path.c_str(), &status), 0);
      journal_->add_folder(folder, folder_of(path));
      journal_->add(folder++, name_of(path), step.new_name, status.st_ino);
    }
    EXPECT_EQ(journal_->seal().reason(), "");
    for (std::size_t i = 0; i < run.steps.size(); ++i) carry_out(tree, i, run.steps[i]);
  }

  void crash() {
    journal_.reset();
    log_.reset();
  }
  RenameLogWriter& log() { return *log_; }
  const std::string& path() const { return path_; }

 private:
  void carry_out(const LogTree& tree, std::size_t index, const Step& step) {
    if (!step.happened.empty()) {
      const std::string old_path = tree / "files/" + step.happened;
      std::filesystem::rename(old_path, folder_of(old_path) + "/" + step.new_name);
      log_->addLogEntry(old_path, folder_of(old_path) + "/" + step.new_name);
    }
    journal_->mark(index, step.mark);
  }

  std::unique_ptr<JournalWriter> journal_ = std::make_unique<JournalWriter>();
  std::unique_ptr<RenameLogWriter> log_ = std::make_unique<RenameLogWriter>();
  std::string path_;
};

std::vector<Pair> expected_pairs(const LogTree& tree, const Interrupted& run) {
  std::vector<Pair> pairs;
  for (const Step& step : run.steps) {
    if (!step.logged) continue;
    const std::string old_path = tree / "files/" + step.happened;
    pairs.emplace_back(old_path, folder_of(old_path) + "/" + step.new_name);
  }
  return pairs;
}

TEST(Recovery, finishes_the_log_of_what_happened_and_undo_takes_it_back) {
  for (const Interrupted& run : interrupted_runs()) {
    SCOPED_TRACE(run.what);
    const LogTree tree;
    make_files(tree, run.files);
    const auto before = tree.state();
    CrashedRun crashed(tree, run);
    crashed.crash();
    const RecoveryResult result = recover(tree.logs());
    EXPECT_THAT(result.problems, IsEmpty());
    ASSERT_THAT(result.runs, SizeIs(1));
    const Result<LogFile> read = readLogFile(result.runs[0].log_path);
    ASSERT_EQ(read.reason(), "");
    const LogFile& log = *read;
    EXPECT_EQ(pairs_in(log), expected_pairs(tree, run));
    EXPECT_EQ(result.runs[0].renamed, log.entries.size());
    EXPECT_EQ(result.runs[0].log_path, finished_log_path(crashed.path(), log.entries.size()));
    EXPECT_THAT(tree.names_in("logs"), SizeIs(1));
    EXPECT_EQ(undoRenaming(result.runs[0].log_path, {}).restored, log.entries.size());
    EXPECT_EQ(tree.state(), before);
    EXPECT_THAT(recover(tree.logs()).runs, IsEmpty());
  }
}

// On disks where a renaming takes two steps.
TEST(Recovery, settles_a_renaming_that_was_half_done) {
  const LogTree tree;
  tree.make({"files/a", "files/b", "files/folder/x"});
  const auto before = tree.state();
  CrashedRun crashed(tree, {"", {}, {{"a", "A1", half}, {"b", "B1", half, "b"}, {"folder", "F1", half}}});
  std::filesystem::create_hard_link(tree / "files/a", tree / "files/A1");
  tree.make({"files/F1/"});
  crashed.crash();
  const RecoveryResult result = recover(tree.logs());
  ASSERT_THAT(result.runs, SizeIs(1));
  EXPECT_THAT(tree.names_in("files"), ElementsAre("B1", "a", "folder"));
  EXPECT_THAT(pairs_in(*readLogFile(result.runs[0].log_path)), ElementsAre(Pair(tree / "files/b", tree / "files/B1")));
  EXPECT_EQ(undoRenaming(result.runs[0].log_path, {}).restored, 1);
  EXPECT_EQ(tree.state(), before);
}

// Stopped between the finished log and the end of the journal, also when the disk tells another story by now.
TEST(Recovery, makes_one_log_of_a_run) {
  const LogTree tree;
  tree.make({"files/a", "files/b"});
  CrashedRun crashed(tree, {"", {}, {{"a", "A1", done, "a"}, {"b", "B1", failed}}});
  ASSERT_EQ(crashed.log().saveLog().reason(), "");
  const std::string saved = crashed.log().saved_path();
  crashed.crash();
  std::filesystem::rename(tree / "files/A1", tree / "files/A2");
  const RecoveryResult result = recover(tree.logs());
  ASSERT_THAT(result.runs, SizeIs(1));
  EXPECT_EQ(result.runs[0].log_path, saved);
  EXPECT_THAT(tree.names_in("logs"), ElementsAre(name_of(saved)));
}

TEST(Recovery, does_not_take_a_strange_log_for_the_runs_own) {
  const LogTree tree;
  tree.make({"files/a"});
  CrashedRun crashed(tree, {"", {}, {{"a", "A1", done, "a"}}});
  RenameLogWriter other;
  ASSERT_EQ(other.take_over(crashed.path(), "FILES", "").reason(), "");
  other.addLogEntry("/x", "/y");
  ASSERT_EQ(other.saveLog().reason(), "");
  crashed.crash();
  const RecoveryResult result = recover(tree.logs());
  ASSERT_THAT(result.runs, SizeIs(1));
  EXPECT_EQ(result.runs[0].log_path, finished_log_path(next_log_path(crashed.path()), 1));
  EXPECT_THAT(pairs_in(*readLogFile(other.saved_path())), ElementsAre(Pair("/x", "/y")));
}

// A disk that is not there now may be back when the run is undone.
TEST(Recovery, believes_in_renamings_where_it_cannot_look) {
  const LogTree tree;
  tree.make({"files/stick/a", "files/stick/b"});
  CrashedRun crashed(tree, {"", {}, {{"stick/a", "A1", none, "stick/a"}, {"stick/b", "B1"}}});
  crashed.crash();
  std::filesystem::rename(tree / "files/stick", tree / "files/unplugged");
  const RecoveryResult result = recover(tree.logs());
  ASSERT_THAT(result.runs, SizeIs(1));
  std::filesystem::rename(tree / "files/unplugged", tree / "files/stick");
  EXPECT_EQ(undoRenaming(result.runs[0].log_path, {}).restored, 1);
  EXPECT_THAT(tree.names_in("files/stick"), ElementsAre("a", "b"));
}

TEST(Recovery, leaves_a_run_alone_that_goes_on) {
  const LogTree tree;
  tree.make({"files/a", "files/b"});
  CrashedRun going_on(tree, {"", {}, {{"a", "A1", done, "a"}}}, 1'000'000);
  CrashedRun crashed(tree, {"", {}, {{"b", "B1", done, "b"}}}, 2'000'000);
  crashed.crash();
  const RecoveryResult result = recover(tree.logs());
  EXPECT_THAT(result.runs, SizeIs(1));
  EXPECT_THAT(result.going_on, ElementsAre(going_on.path()));
  const UndoResult undo = undoRenaming(result.runs[0].log_path, {}, {}, {tree.logs()});
  EXPECT_THAT(undo.error, HasSubstr("a renaming is going on"));
  EXPECT_EQ(undo.reached, 0);
  EXPECT_EQ(going_on.log().saveLog().reason(), "");
  EXPECT_EQ(pairs_in(*readLogFile(going_on.log().saved_path())).size(), 1);
}

// Some disks that ignore letter case list names in lower case.
TEST(Recovery, knows_its_files_in_other_letters) {
  const LogTree tree;
  tree.make({"files/a"});
  CrashedRun crashed(tree, {"", {}, {{"a", "A1", done, "a"}}});
  crashed.crash();
  for (const std::string& name : tree.names_in("logs")) {
    std::filesystem::rename(tree.logs() + "/" + name, tree.logs() + "/log" + name.substr(3));
  }
  EXPECT_THAT(loadUserLogFiles(tree.logs()), IsEmpty());
  EXPECT_THAT(recover(tree.logs()).runs, SizeIs(1));
  EXPECT_THAT(loadUserLogFiles(tree.logs()), SizeIs(1));
  EXPECT_THAT(tree.names_in("logs"), SizeIs(1));
}

// Without the space that runs reserve for their logs.
TEST(Recovery, waits_for_room_on_a_full_disk_and_undo_waits_for_it) {
  const LogTree tree;
  tree.make({"files/a", "files/older"});
  const std::string older = make_log(tree.logs(), {{tree / "files/old", tree / "files/older"}}, 10);
  CrashedRun crashed(tree, {"", {}, {{"a", "A1", done, "a"}}});
  crashed.crash();
  {
    const FullDisk full(20);
    const RecoveryResult result = recover(tree.logs());
    EXPECT_THAT(result.runs, IsEmpty());
    EXPECT_THAT(result.problems, SizeIs(1));
    EXPECT_THAT(undoRenaming(older, {}, {}, {tree.logs()}).error, HasSubstr("could not be finished"));
  }
  EXPECT_THAT(tree.names_in("files"), ElementsAre("A1", "older"));
  EXPECT_THAT(recover(tree.logs()).runs, SizeIs(1));
  EXPECT_THAT(tree.names_in("logs"), SizeIs(2));
  EXPECT_EQ(undoRenaming(older, {}, {}, {tree.logs()}).restored, 1);
}

TEST(Recovery, sets_a_damaged_journal_aside) {
  const LogTree tree;
  tree.make({"files/a"});
  for (const std::size_t at : {std::size_t{0}, std::size_t{100}, sizeof(JournalHeader) + 1}) {
    SCOPED_TRACE(at);
    CrashedRun crashed(tree, {"", {}, {{"a", "A1", begun}}});
    crashed.crash();
    std::string bytes = content_of(journal_path(crashed.path()));
    bytes[at] ^= 1;
    write_file(journal_path(crashed.path()), bytes);
    const RecoveryResult result = recover(tree.logs());
    EXPECT_THAT(result.set_aside, ElementsAre(HasSubstr("damaged")));
    EXPECT_THAT(result.runs, IsEmpty());
    EXPECT_NE(may_undo(result).reason(), "");
    EXPECT_EQ(may_undo(recover(tree.logs())).reason(), "") << "it has been told";
  }
  EXPECT_THAT(tree.names_in("logs"), SizeIs(3));
}

TEST(Recovery, clears_away_what_came_to_nothing) {
  const LogTree tree;
  const std::string run = tree.logs() + "/Log 01-01-2026 00-00-00-#";
  const std::string other = tree.logs() + "/Log 02-01-2026 00-00-00-#.xml";
  for (const std::string& path : {run + ".xml", run + ".journal", run + ".xml.part", other, other + ".part"})
    write_file(path, "");
  write_file(tree.logs() + "/Log 02-01-2026 00-00-00-3.xml.undo", "");
  write_file(tree.logs() + "/Log 03-01-2026 00-00-00-#.xml", "<files><file/></files>");
  EXPECT_THAT(recover(tree.logs()).runs, SizeIs(1));
  EXPECT_THAT(tree.names_in("logs"), ElementsAre("Log 03-01-2026 00-00-00-#.xml")) << "no trace of a run of ours";
  EXPECT_THAT(recover(tree / "nowhere").problems, IsEmpty());
}

}  // namespace
}  // namespace brindle::test
