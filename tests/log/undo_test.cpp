#include "log/undo.h"

#include <gmock/gmock.h>
#include <sys/file.h>

#include "log/undo_progress.h"
#include "log_support.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Renames below files/ as a run would, and logs it.
std::string rename_and_log(const LogTree& tree, const std::vector<Pair>& renames) {
  std::vector<Pair> pairs;
  for (const auto& [source, target] : renames) {
    std::filesystem::rename(tree.files() + "/" + source, tree.files() + "/" + target);
    pairs.emplace_back(tree.files() + "/" + source, tree.files() + "/" + target);
  }
  return make_log(tree.logs(), pairs);
}

/// "name: reason" of every entry that was left alone.
struct Listener {
  std::vector<std::string> left;
  std::size_t heard = 0;
  std::function<void()> after_entry = [] {};
  UndoReport report() {
    return [this](const LogEntry& entry, std::string_view reason, bool /*moved*/) {
      ++heard;
      if (!reason.empty()) left.push_back(std::string(entry.target_name) + ": " + std::string(reason));
      after_entry();
    };
  }
};

struct Renaming {
  const char* what;
  std::vector<std::string> files;
  std::vector<Pair> renames;
};

const std::vector<Renaming>& runs() {
  static const std::vector<Renaming> all = {
      {"files of several folders in turn", {"a/1", "b/1", "a/2"}, {{"a/1", "a/x1"}, {"b/1", "b/x1"}, {"a/2", "a/x2"}}},
      {"names that step into one another's places", {"1", "2", "3"}, {{"3", "4"}, {"2", "3"}, {"1", "2"}}},
      {"two that change places", {"1", "2"}, {{"1", "t"}, {"2", "1"}, {"t", "2"}}},
      {"folders before what they hold",
       {"o/s/f", "p/f"},
       {{"o", "n"}, {"n/s", "n/t"}, {"n/t/f", "n/t/g"}, {"p", "o"}, {"o/f", "o/g"}}},
      {"letter case alone", {"name.TXT", "D/e"}, {{"name.TXT", "name.txt"}, {"D", "d"}, {"d/e", "d/E"}}},
      {"into another folder", {"a/1", "b/"}, {{"a/1", "b/2"}}},
      {"bytes of every kind",
       {"\xff\x01", "a\nb/c:d"},
       {{"\xff\x01", "\xfe\x02"}, {"a\nb", "\t"}, {"\t/c:d", "\t/\xee\xbe\x80"}}},
      {"links, dangling ones too", {"l -> nowhere", "k -> l"}, {{"l", "m"}, {"k", "l"}}},
  };
  return all;
}

TEST(Undo, restores_the_same_files_under_the_same_names) {
  for (const Renaming& run : runs()) {
    SCOPED_TRACE(run.what);
    const LogTree tree;
    for (const std::string& file : run.files) tree.make({"files/" + file});
    const auto before = tree.state();
    const std::string log = rename_and_log(tree, run.renames);
    ASSERT_NE(tree.state(), before);
    Listener listener;
    const UndoResult result = undoRenaming(log, {}, listener.report());
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(tree.state(), before);
    EXPECT_EQ(result.entries, run.renames.size());
    EXPECT_EQ(result.restored, run.renames.size());
    EXPECT_THAT(listener.left, IsEmpty());
    EXPECT_EQ(listener.heard, result.entries);
    EXPECT_TRUE(result.log_removed);
    EXPECT_THAT(tree.names_in("logs"), IsEmpty());
    EXPECT_THAT(tree.names_in("data/Trash/files"), SizeIs(1)) << "the log can be got back";
  }
}

// As if the system had gone down since.
void change_boot_id(const std::string& progress) {
  std::fstream file(progress, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(24).put('?');
}

// Broken off after every number of entries, and undone again.
TEST(Undo, goes_on_where_it_was_broken_off) {
  for (const Renaming& run : runs()) {
    for (std::size_t round = 0; round < 2 * run.renames.size(); ++round) {
      const std::size_t stop = round / 2;
      const bool rebooted = round % 2 != 0;
      SCOPED_TRACE(std::string(run.what) + ", broken off after " + std::to_string(stop));
      const LogTree tree;
      for (const std::string& file : run.files) tree.make({"files/" + file});
      const auto before = tree.state();
      const std::string log = rename_and_log(tree, run.renames);
      std::atomic<bool> cancel = stop == 0;
      Listener first;
      first.after_entry = [&] { cancel = first.heard == stop; };
      const UndoResult broken = undoRenaming(log, {&cancel}, first.report());
      EXPECT_TRUE(broken.cancelled);
      EXPECT_FALSE(broken.log_removed);
      EXPECT_EQ(broken.restored, stop);
      const std::vector<BrokenOffUndo> traces = broken_off_undos(tree.logs());
      ASSERT_THAT(traces, SizeIs(1));
      EXPECT_EQ(traces[0].log_path, log);
      EXPECT_EQ(traces[0].restored, stop);
      EXPECT_EQ(traces[0].entries, run.renames.size());
      if (rebooted) change_boot_id(undo_progress_path(log));
      Listener second;
      const UndoResult result = undoRenaming(log, {}, second.report());
      EXPECT_EQ(result.error, "");
      EXPECT_EQ(tree.state(), before);
      EXPECT_EQ(result.restored, run.renames.size());
      EXPECT_EQ(second.heard, run.renames.size());
      EXPECT_THAT(tree.names_in("logs"), IsEmpty());
    }
  }
}

TEST(Undo, leaves_alone_what_it_cannot_restore) {
  const LogTree tree;
  tree.make({"files/a", "files/b", "files/c", "files/d/e", "files/f", "files/g"});
  const std::string log =
      rename_and_log(tree, {{"a", "A1"}, {"b", "B1"}, {"c", "C1"}, {"d/e", "d/E1"}, {"f", "F1"}, {"g", "G1"}});
  tree.make({"files/a", "files/f/"});
  std::filesystem::remove(tree / "files/b");
  std::filesystem::remove(tree / "files/B1");
  std::filesystem::rename(tree / "files/d", tree / "files/elsewhere");
  std::filesystem::remove(tree / "files/G1");
  std::filesystem::create_hard_link(tree / "files/C1", tree / "files/c");
  Listener listener;
  const UndoResult result = undoRenaming(log, {}, listener.report());
  EXPECT_EQ(result.entries, 6);
  EXPECT_EQ(result.restored, 0);
  EXPECT_THAT(listener.left, ElementsAre("G1: it is no longer there", "F1: another file has its old name",
                                         "E1: it is no longer there", "C1: another file has its old name",
                                         "B1: it is no longer there", "A1: another file has its old name"));
  EXPECT_EQ(content_of(tree / "files/a"), "files/a");
  EXPECT_EQ(content_of(tree / "files/A1"), "files/a");
  EXPECT_TRUE(result.log_removed) << "a log is undone once";
}

TEST(Undo, keeps_a_log_that_it_cannot_read) {
  const LogTree tree;
  write_file(tree.logs() + "/bad.xml", "<files><file");
  const UndoResult result = undoRenaming(tree.logs() + "/bad.xml", {});
  EXPECT_THAT(result.error, HasSubstr("bad.xml"));
  EXPECT_THAT(tree.names_in("logs"), ElementsAre("bad.xml"));
}

TEST(Undo, removes_a_log_without_entries_and_counts_the_unusable_ones) {
  const LogTree tree;
  EXPECT_TRUE(undoRenaming(make_log(tree.logs(), {}), {}).log_removed);
  tree.make({"files/new"});
  const std::string path = tree.logs() + "/log.xml";
  write_file(path, "<files><file/><file srclocation=\"" + tree.files() + "\" tarlocation=\"" + tree.files() +
                       "\" srcfilename=\"..\" tarfilename=\"new\"/></files>");
  const UndoResult result = undoRenaming(path, {});
  EXPECT_EQ(result.entries, 2);
  EXPECT_EQ(result.restored, 0);
  EXPECT_THAT(tree.names_in("files"), ElementsAre("new"));
}

TEST(Undo, is_done_by_one_process_at_a_time) {
  const LogTree tree;
  tree.make({"files/a"});
  const std::string log = rename_and_log(tree, {{"a", "b"}});
  {
    UndoProgress other;
    ASSERT_EQ(other.open(log, 1, 1), "");
    EXPECT_THAT(undoRenaming(log, {}).error, HasSubstr("just being undone"));
  }
  // What the other left is about another log of this name.
  EXPECT_EQ(undoRenaming(log, {}).restored, 1);
}

// A log on a disk that cannot be written to: its progress is kept in the data folder.
TEST(Undo, keeps_track_elsewhere_when_it_must) {
  const LogTree tree;
  tree.make({"files/1", "files/2"});
  const std::string log = rename_and_log(tree, {{"1", "t"}, {"2", "1"}, {"t", "2"}});
  tree.make({"logs/" + std::filesystem::path(log).filename().string() + ".undo/"});
  std::atomic<bool> cancel = false;
  Listener first;
  first.after_entry = [&] { cancel = true; };
  EXPECT_EQ(undoRenaming(log, {&cancel}, first.report()).restored, 1);
  EXPECT_THAT(tree.names_in("data/Tessalon/Brindle4"), SizeIs(1));
  EXPECT_EQ(undoRenaming(log, {}).restored, 3);
  EXPECT_EQ(content_of(tree / "files/1"), "files/1");
  EXPECT_THAT(tree.names_in("data/Tessalon/Brindle4"), IsEmpty());
}

}  // namespace
}  // namespace brindle::test
