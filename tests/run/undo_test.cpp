#include "run/undo.h"

#include <gmock/gmock.h>
#include <sys/file.h>
#include <unistd.h>

#include "log/undo_progress.h"
#include "support/log_support.h"

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

/// A log that says that it is of another type.
std::string retyped(const std::string& log, const std::string& type) {
  std::string text = content_of(log);
  write_file(log, text.replace(text.find("FILES"), 5, type));
  return log;
}

/// "name: reason" of every entry that was left alone.
struct Listener {
  std::vector<std::string> left;
  std::size_t heard = 0;
  std::function<void()> after_entry = [] {};
  UndoReport report() {
    return [this](const LogEntry& entry, UndoOutcome outcome, std::string_view reason) {
      EXPECT_EQ(outcome == UndoOutcome::left, !reason.empty());
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
    EXPECT_TRUE(result.put_away);
    EXPECT_THAT(tree.names_in("logs"), ElementsAre("Undone"));
    EXPECT_THAT(readLogFile(result.log_path)->entries, SizeIs(run.renames.size())) << "the log can be got back";
  }
}

// As if the marks had never reached the disk.
void lose_marks(const std::string& progress) {
  std::string bytes = content_of(progress);
  std::fill(bytes.begin() + ::sysconf(_SC_PAGESIZE), bytes.end(), '\0');
  write_file(progress, bytes);
}

// Broken off after every number of entries, and undone again.
TEST(Undo, goes_on_where_it_was_broken_off) {
  for (const Renaming& run : runs()) {
    for (std::size_t round = 0; round < 2 * run.renames.size(); ++round) {
      const std::size_t stop = round / 2;
      const bool marks_are_lost = round % 2 != 0;
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
      EXPECT_FALSE(broken.put_away);
      EXPECT_EQ(broken.reached, stop);
      EXPECT_EQ(broken.restored, stop);
      const std::vector<BrokenOffUndo> traces = broken_off_undos(tree.logs());
      ASSERT_THAT(traces, SizeIs(1));
      EXPECT_EQ(traces[0].log_path, log);
      EXPECT_EQ(traces[0].restored, stop);
      EXPECT_EQ(traces[0].entries, run.renames.size());
      if (marks_are_lost) lose_marks(undo_progress_path(log));
      Listener second;
      const UndoResult result = undoRenaming(log, {}, second.report());
      EXPECT_EQ(result.error, "");
      EXPECT_EQ(tree.state(), before);
      EXPECT_EQ(result.restored + result.already, run.renames.size());
      EXPECT_EQ(result.already, marks_are_lost ? stop : 0);
      EXPECT_EQ(second.heard, run.renames.size());
      EXPECT_THAT(tree.names_in("logs"), ElementsAre("Undone"));
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
  EXPECT_EQ(result.left_alone(), 6);
  EXPECT_FALSE(result.put_away) << "it can be undone again when what stands in the way is gone";
  EXPECT_EQ(result.log_path, log);
  EXPECT_THAT(broken_off_undos(tree.logs()), IsEmpty()) << "nobody broke it off";
  std::filesystem::remove(tree / "files/a");
  std::filesystem::rename(tree / "files/elsewhere", tree / "files/d");
  const UndoResult again = undoRenaming(log, {});
  EXPECT_EQ(again.restored, 2);
  EXPECT_EQ(again.left_alone(), 4);
  EXPECT_THAT(tree.names_in("files/d"), ElementsAre("e"));
}

// What an undo restored is not moved once more, and folders that got their old names back are found under them.
TEST(Undo, of_folders_can_be_run_again_after_a_failure) {
  const LogTree tree;
  tree.make({"files/o/s/f", "files/o/t/g"});
  const auto before = tree.state();
  std::string log = rename_and_log(tree, {{"o", "n"}, {"n/s", "n/S"}, {"n/t", "n/T"}, {"n/S/f", "n/S/F"}});
  log = retyped(log, "FOLDERS");
  tree.make({"files/n/S/f", "files/n/t"});
  const UndoResult first = undoRenaming(log, {});
  EXPECT_EQ(first.restored, 2);
  EXPECT_EQ(first.left_alone(), 2);
  std::filesystem::remove(tree / "files/o/s/f");
  std::filesystem::remove(tree / "files/o/t");
  const UndoResult second = undoRenaming(log, {});
  EXPECT_EQ(second.restored, 4);
  EXPECT_TRUE(second.put_away);
  EXPECT_EQ(tree.state(), before);
}

// The disk is asked: marks may be ahead of it.
TEST(Undo, restores_what_only_marks_call_restored) {
  const LogTree tree;
  tree.make({"files/a", "files/b"});
  const std::string log = rename_and_log(tree, {{"a", "A1"}, {"b", "B1"}});
  {
    UndoProgress before;
    ASSERT_EQ(before.open(log, readLogFile(log)->checksum, 2).reason(), "");
    before.set(0, UndoMark::restored);
    before.set(1, UndoMark::restored);
  }
  EXPECT_EQ(undoRenaming(log, {}).restored, 2);
  EXPECT_THAT(tree.names_in("files"), ElementsAre("a", "b"));
}

TEST(Undo, goes_through_no_link) {
  const LogTree tree;
  tree.make({"files/d/a", "files/elsewhere/b"});
  const std::string log = rename_and_log(tree, {{"d/a", "d/b"}});
  std::filesystem::rename(tree / "files/d", tree / "files/away");
  std::filesystem::create_directory_symlink("elsewhere", tree / "files/d");
  Listener listener;
  EXPECT_EQ(undoRenaming(log, {}, listener.report()).restored, 0);
  EXPECT_THAT(listener.left, ElementsAre("b: a symbolic link stands in the way to it"));
  EXPECT_THAT(tree.names_in("files/elsewhere"), ElementsAre("b"));
}

TEST(Undo, believes_a_log_from_elsewhere_only_within_a_folder) {
  const LogTree tree;
  tree.make({"files/a", "files/d/b"});
  const std::string own = rename_and_log(tree, {{"d/b", "b"}, {"a", "A1"}});
  const std::string log = tree / "strange.xml";
  std::filesystem::rename(own, log);
  Listener listener;
  const UndoResult result = undoRenaming(log, {}, listener.report(), {tree.logs()});
  EXPECT_EQ(result.restored, 1);
  EXPECT_THAT(listener.left, ElementsAre("b: the log is from elsewhere, and would move it to another folder"));
  EXPECT_THAT(tree.names_in("files"), ElementsAre("a", "b", "d"));
  EXPECT_TRUE(undoRenaming(log, {}, {}, {tree.logs(), true}).put_away);
  EXPECT_THAT(tree.names_in("files/d"), ElementsAre("b"));
}

TEST(Undo, leaves_what_holds_the_logs_where_it_is) {
  const LogTree tree;
  tree.make({"files/a"});
  const std::string log = make_log(tree.logs(), {{tree / "was", tree / "logs"}, {tree / "files/a", tree / "files/A1"}});
  std::filesystem::rename(tree / "files/a", tree / "files/A1");
  Listener listener;
  EXPECT_EQ(undoRenaming(log, {}, listener.report(), {tree.logs()}).restored, 1);
  EXPECT_THAT(listener.left, ElementsAre("logs: it holds Brindle's own data"));
}

// One that could not be put away is not counted again.
TEST(Undo, of_an_undone_log_restores_nothing) {
  const LogTree tree;
  tree.make({"files/a", "logs/Undone", "data/Trash"});  // files, where folders are wanted
  const std::string log = rename_and_log(tree, {{"a", "A1"}});
  const UndoResult first = undoRenaming(log, {});
  EXPECT_EQ(first.restored, 1);
  EXPECT_THAT(first.error, HasSubstr("cannot be put away"));
  EXPECT_EQ(broken_off_undo(log).end, UndoEnd::complete);
  const UndoResult second = undoRenaming(log, {});
  EXPECT_EQ(second.restored, 0);
  EXPECT_EQ(second.already, 1);
}

TEST(Undo, needs_no_room_on_the_disk) {
  const LogTree tree;
  tree.make({"files/a", "files/b"});
  const std::string log = rename_and_log(tree, {{"a", "A1"}, {"b", "B1"}});
  const FullDisk full(0);
  EXPECT_EQ(undoRenaming(log, {}).restored, 2);
}

// Who may change a folder need not be allowed to list it.
TEST(Undo, restores_in_a_folder_that_cannot_be_read) {
  const LogTree tree;
  tree.make({"files/d/a"});
  const std::string log = rename_and_log(tree, {{"d/a", "d/b"}});
  std::filesystem::permissions(tree / "files/d", std::filesystem::perms(0300));
  const auto undo_as_nobody = [&] {
    if (::geteuid() == 0) {
      for (const auto& entry : std::filesystem::recursive_directory_iterator(tree / ""))
        if (::lchown(entry.path().c_str(), 65534, 65534) != 0) ::_exit(77);
      if (::lchown(tree.path().c_str(), 65534, 65534) != 0 || ::setresuid(65534, 65534, 65534) != 0) ::_exit(77);
    }
    const UndoResult result = undoRenaming(log, {});
    ::_exit(result.put_away && result.error.empty() ? 0 : 1);
  };
  EXPECT_EXIT(undo_as_nobody(), testing::ExitedWithCode(0), "");
  std::filesystem::permissions(tree / "files/d", std::filesystem::perms(0700));
  EXPECT_THAT(tree.names_in("files/d"), ElementsAre("a"));
}

// The newest fifty are kept.
TEST(Undo, puts_old_undone_logs_into_the_trash) {
  const LogTree tree;
  for (std::time_t when = 1; when <= 52; ++when) {
    tree.make({"files/a"});
    std::filesystem::rename(tree / "files/a", tree / "files/A1");
    const std::string log = make_log(tree.logs(), {{tree / "files/a", tree / "files/A1"}}, when);
    ASSERT_TRUE(undoRenaming(log, {}).put_away);
  }
  EXPECT_THAT(tree.names_in("logs/Undone"), SizeIs(50));
  EXPECT_THAT(tree.names_in("data/Trash/files"), SizeIs(2));
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
  EXPECT_TRUE(undoRenaming(make_log(tree.logs(), {}), {}).put_away);
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
    ASSERT_EQ(other.open(log, 1, 1).reason(), "");
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
