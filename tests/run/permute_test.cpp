// Any permutation of names, from the list through run, log and recovery to the undo.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>

#include "gather/gather.h"
#include "log/journal.h"
#include "platform/file_name.h"
#include "platform/move.h"
#include "run/apply.h"
#include "run/recovery.h"
#include "run/run_log.h"
#include "run/undo.h"
#include "support/log_support.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using State = std::map<std::string, std::uint64_t>;
using NewNames = std::map<std::string, std::string>;

/// One run over what lies in files/.
class Permutation {
 public:
  explicit Permutation(const std::vector<std::string>& entries) {
    for (const std::string& entry : entries) tree.make({"files/" + entry});
    before = tree.state();
  }

  void gather(bool folders) { addFiles(files, std::vector{tree.files()}, {.isFolders = folders}, nullptr, {}); }
  ApplyResult apply(const NewNames& new_names, bool folders = false) {
    if (files.empty()) gather(folders);
    FileSystemItem item;
    for (std::size_t row = 0; row < files.size(); ++row) {
      const auto found = new_names.find(std::string(files[row].name()));
      if (found == new_names.end()) continue;
      files.read(row, item);
      item.setNewFilename(decode_file_name(found->second));
      files.write(row, item, 255);
    }
    ApplyOptions options;
    options.isFolders = folders;
    options.log_folder = tree.logs();
    options.permute = true;
    return applyRenames(files, options, {});
  }

  /// Where everything is when these names are given, one component after the other.
  State expected(const NewNames& new_names) const {
    State state;
    for (const auto& [path, inode] : before) {
      std::string renamed;
      for (std::size_t at = 0; at <= path.size();) {
        const std::size_t slash = std::min(path.find('/', at), path.size());
        const std::string name = path.substr(at, slash - at);
        const auto found = new_names.find(name);
        renamed += (at == 0 ? "" : "/") + (found == new_names.end() ? name : found->second);
        at = slash + 1;
      }
      state.emplace(renamed, inode);
    }
    return state;
  }

  void expect_rows_where_they_are() const {
    const State state = tree.state();
    for (std::size_t row = 0; row < files.size(); ++row) {
      const std::string path = files.path(row).substr(tree.files().size() + 1);
      ASSERT_TRUE(state.contains(path)) << path;
      EXPECT_EQ(state.at(path), files[row].inode);
    }
  }

  LogTree tree;
  FileList files;
  State before;
};

const std::vector<std::string> five = {"a", "A", "b.txt", "c", "a long name with \xC3\xA4"};

TEST(Permute, CarriesOutAllOrdersOfFiveNamesAndTakesThemBack) {
  for (const bool folders : {false, true}) {
    std::vector<std::string> order = five;
    std::ranges::sort(order);
    const std::vector<std::string> old_names = order;
    do {
      NewNames new_names;
      for (std::size_t i = 0; i < 5; ++i) new_names[old_names[i]] = order[i];
      if (folders) new_names.insert({{"in", "inside"}, {"x", "y"}, {"y", "x"}});
      std::vector<std::string> entries = old_names;
      for (std::string& entry : entries) entry += folders ? "/in/" : "";
      if (folders) entries.insert(entries.end(), {"a/in/x/", "a/in/y/file", "c/x/", "c/y/x/"});
      Permutation run(entries);
      const ApplyResult result = run.apply(new_names, folders);
      EXPECT_EQ(run.tree.state(), run.expected(new_names));
      EXPECT_EQ(result.error, "");
      EXPECT_FALSE(result.first_failed.has_value());
      run.expect_rows_where_they_are();
      if (result.renamed == 0) continue;
      EXPECT_THAT(run.tree.names_in("logs"), SizeIs(1));
      const UndoResult undone = undoRenaming(result.log_path, {});
      EXPECT_EQ(undone.restored, result.renamed);
      ASSERT_EQ(run.tree.state(), run.before);
    } while (std::ranges::next_permutation(order).found);
  }
}

TEST(Permute, CarriesOutPartsOfPermutationsWithThreads) {
  std::mt19937 random(11);
  for (int round = 0; round < 12; ++round) {
    std::vector<std::string> entries;
    std::vector<std::string> names;
    for (int i = 0; i < 40; ++i) names.push_back("name " + std::to_string(i));
    std::vector<std::string> shuffled = names;
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    NewNames new_names;
    for (std::size_t i = 0; i < names.size(); ++i) {
      const bool is_free = random() % 8 == 0;
      new_names[names[i]] = is_free ? "free " + names[i] : shuffled[i];
    }
    for (int folder = 0; folder < 6; ++folder) {
      for (const std::string& name : names) entries.push_back("folder " + std::to_string(folder) + "/" + name);
    }
    Permutation run(entries);
    const ApplyResult result = run.apply(new_names);
    EXPECT_EQ(run.tree.state(), run.expected(new_names));
    run.expect_rows_where_they_are();
    EXPECT_EQ(undoRenaming(result.log_path, {}).restored, result.renamed);
    ASSERT_EQ(run.tree.state(), run.before);
  }
}

TEST(Permute, CarriesOutARingOfTenThousandAndPairs) {
  std::vector<std::string> entries;
  NewNames new_names;
  for (int i = 0; i < 10'000; ++i) {
    entries.push_back(std::to_string(i));
    new_names[entries.back()] = std::to_string((i + 1) % 10'000);
  }
  for (int i = 0; i < 1000; ++i) {  // and pairs
    entries.push_back("pair " + std::to_string(i));
    new_names[entries.back()] = "pair " + std::to_string(i ^ 1);
  }
  Permutation run(entries);
  const ApplyResult result = run.apply(new_names);
  EXPECT_EQ(run.tree.state(), run.expected(new_names));
  EXPECT_EQ(undoRenaming(result.log_path, {}).restored, 11'000U);
  EXPECT_EQ(run.tree.state(), run.before);
}

TEST(Permute, RenamesAllOfARingOrNone) {
  Permutation run({"a", "b", "c", "d", "e"});
  run.gather(false);
  run.tree.make({"files/new b"});
  std::filesystem::rename(run.tree / "files/new b", run.tree / "files/b");
  const State state = run.tree.state();
  const ApplyResult result = run.apply({{"a", "b"}, {"b", "c"}, {"c", "a"}, {"d", "e"}, {"e", "d"}});
  EXPECT_EQ(result.renamed, 2U);
  State after = run.tree.state();
  EXPECT_EQ(after.at("d"), run.before.at("e"));
  std::swap(after.at("d"), after.at("e"));
  EXPECT_EQ(after, state);
  for (std::uint32_t row = 0; row < 5; ++row) {
    const std::string name(run.files[row].name());
    if (run.files[row].status == ItemStatus::renaming_ok) continue;
    EXPECT_EQ(run.files.reason(row), name == "b" ? "another file has its name by now"
                                                 : "it changes names with others, and one of them cannot be renamed");
    EXPECT_LE(result.first_failed, row);
  }
}

// Recovery.

struct StoppedRing {
  const char* what;
  std::vector<int> exchanges;  ///< the first name was exchanged with that of these members
  JournalMark first;           ///< the marks that are found
  JournalMark rest;
  bool done;  ///< whether the log must have it
};

TEST(Permute, IsRecoveredWhereverItWasStopped) {
  using enum JournalMark;
  const StoppedRing rings[] = {
      {"not begun", {}, none, none, false},
      {"not begun, marks ahead", {}, done, done, false},
      {"half", {1}, begun, begun, false},
      {"half, marks lost", {1, 2}, none, none, false},
      {"done", {1, 2, 3}, begun, done, true},
      {"done, marks lost", {1, 2, 3}, none, none, true},
      {"taken back", {1, 1}, failed, failed, false},
  };
  for (const StoppedRing& ring : rings) {
    SCOPED_TRACE(ring.what);
    Permutation run({"0", "1", "2", "3", "x", "y"});
    const FolderHandle folder = FolderHandle::open(run.tree.files());
    {
      JournalWriter journal;
      RenameLogWriter log;
      ASSERT_EQ(begin_run_log(run.tree.logs(), 1'000'000, {false, false, "4"}, journal, log).reason(), "");
      journal.add_folder(0, run.tree.files());
      // A chain, then the ring, and one more.
      journal.add(0, "x", "z", run.before.at("x"));
      journal.begin_cycle(4, ".brindle-1-1.swap");
      for (int i = 0; i < 4; ++i) {
        const std::string name = std::to_string(i);
        journal.add(0, name, std::to_string((i + 1) % 4), run.before.at(name));
      }
      journal.add(0, "y", "x", run.before.at("y"));
      ASSERT_EQ(journal.seal().reason(), "");
      std::filesystem::rename(run.tree / "files/x", run.tree / "files/z");
      for (const int other : ring.exchanges) ASSERT_EQ(exchange_names(folder, "0", std::to_string(other).c_str()), 0);
      journal.mark(1, ring.first);
      for (std::size_t i = 2; i < 5; ++i) journal.mark(i, ring.rest);
    }
    const RecoveryResult result = recover(run.tree.logs());
    EXPECT_THAT(result.problems, IsEmpty());
    ASSERT_THAT(result.runs, SizeIs(1));
    EXPECT_EQ(result.runs[0].renamed, ring.done ? 5U : 1U);
    const NewNames round = {{"0", "1"}, {"1", "2"}, {"2", "3"}, {"3", "0"}};
    NewNames names = {{"x", "z"}};
    if (ring.done) names.insert(round.begin(), round.end());
    EXPECT_EQ(run.tree.state(), run.expected(names));
    EXPECT_EQ(undoRenaming(result.runs[0].log_path, {}).left_alone(), 0U);
    EXPECT_EQ(run.tree.state(), run.before);
  }
}

TEST(Permute, RecoveryWaitsForWhatStandsInTheWay) {
  Permutation run({"0", "1"});
  const std::string reserved = ".brindle-1-0.swap";
  {
    JournalWriter journal;
    RenameLogWriter log;
    ASSERT_EQ(begin_run_log(run.tree.logs(), 1'000'000, {false, false, "4"}, journal, log).reason(), "");
    journal.add_folder(0, run.tree.files());
    journal.begin_cycle(2, reserved);
    journal.add(0, "0", "1", run.before.at("0"));
    journal.add(0, "1", "0", run.before.at("1"));
    ASSERT_EQ(journal.seal().reason(), "");
    journal.mark(0, JournalMark::begun);
  }
  std::filesystem::rename(run.tree / "files/0", run.tree / ("files/" + reserved));
  run.tree.make({"files/0"});
  const State state = run.tree.state();
  const RecoveryResult waiting = recover(run.tree.logs());
  ASSERT_THAT(waiting.problems, SizeIs(1));
  EXPECT_THAT(waiting.problems[0], ::testing::HasSubstr(reserved));
  EXPECT_EQ(run.tree.state(), state) << "nobody else's file is touched";
  std::filesystem::remove(run.tree / "files/0");
  EXPECT_THAT(recover(run.tree.logs()).runs, SizeIs(1));
  EXPECT_EQ(run.tree.state(), run.before);
}

// Two hard links that both moved up look as if neither had.
TEST(Permute, ChainsOfHardLinksAreRecovered) {
  for (const std::size_t moved : {0U, 1U, 2U, 3U}) {
    Permutation run({"a"});
    for (const char* name : {"b", "c"})
      std::filesystem::create_hard_link(run.tree / "files/a", run.tree / (std::string("files/") + name));
    run.before = run.tree.state();
    const std::vector<std::pair<std::string, std::string>> chain = {{"c", "d"}, {"b", "c"}, {"a", "b"}};
    {
      JournalWriter journal;
      RenameLogWriter log;
      ASSERT_EQ(begin_run_log(run.tree.logs(), 1'000'000, {false, false, "4"}, journal, log).reason(), "");
      journal.add_folder(0, run.tree.files());
      for (const auto& [from, to] : chain) journal.add(0, from, to, run.before.at(from));
      ASSERT_EQ(journal.seal().reason(), "");
    }
    const FolderHandle folder = FolderHandle::open(run.tree.files());
    for (std::size_t i = 0; i < moved; ++i)
      ASSERT_EQ(move_exclusively(folder, chain[i].first.c_str(), folder, chain[i].second.c_str()), 0);
    const RecoveryResult result = recover(run.tree.logs());
    ASSERT_THAT(result.runs, SizeIs(1));
    EXPECT_EQ(result.runs[0].renamed, moved);
    undoRenaming(result.runs[0].log_path, {});
    EXPECT_EQ(run.tree.state(), run.before);
  }
}

// Undo.

TEST(Permute, UndoLeavesARingAloneOfWhichOneIsGone) {
  Permutation run({"a", "b", "c"});
  const ApplyResult result = run.apply({{"a", "b"}, {"b", "c"}, {"c", "a"}});
  std::filesystem::rename(run.tree / "files/b", run.tree / "elsewhere");
  const State state = run.tree.state();
  UndoResult undone = undoRenaming(result.log_path, {});
  EXPECT_EQ(undone.left_alone(), 3U);
  EXPECT_EQ(run.tree.state(), state);
  std::filesystem::rename(run.tree / "elsewhere", run.tree / "files/b");
  undone = undoRenaming(result.log_path, {});
  EXPECT_EQ(undone.restored, 3U);
  EXPECT_EQ(run.tree.state(), run.before);
  EXPECT_EQ(undoRenaming(undone.log_path, {}).already, 3U) << "undone once, and not done again";
  EXPECT_EQ(run.tree.state(), run.before);
}

// Saved anew means another inode.
TEST(Permute, UndoTakesBackWhatWasSavedAnewMeanwhile) {
  Permutation run({"a", "b"});
  const ApplyResult result = run.apply({{"a", "b"}, {"b", "a"}});
  for (const char* name : {"a", "b"}) {
    run.tree.make({"saved"});
    std::filesystem::rename(run.tree / "saved", run.tree / (std::string("files/") + name));
  }
  const State state = run.tree.state();
  EXPECT_EQ(undoRenaming(result.log_path, {}).restored, 2U);
  EXPECT_EQ(run.tree.state().at("a"), state.at("b"));
}

TEST(Permute, ASecondUndoTakesNoNeighbourForTheItem) {
  Permutation run({"1", "2", "x"});
  const ApplyResult result = run.apply({{"1", "2"}, {"2", "3"}, {"x", "y"}});
  run.tree.make({"files/x"});
  EXPECT_EQ(undoRenaming(result.log_path, {}).restored, 2U);
  std::filesystem::remove(run.tree / "files/1");
  std::filesystem::remove(run.tree / "files/x");
  undoRenaming(result.log_path, {});
  State expected = run.before;
  expected.erase("1");
  EXPECT_EQ(run.tree.state(), expected) << "2 is where it was";
}

TEST(Permute, ASecondUndoFindsWhatLiesInFoldersThatChangedPlaces) {
  struct Case {
    const char* what;
    NewNames folders;
  };
  for (const Case& test : {Case{"ring", {{"A", "B"}, {"B", "A"}}}, Case{"chain", {{"A", "B"}, {"B", "C"}}}}) {
    SCOPED_TRACE(test.what);
    Permutation run({"A/in/", "B/in/"});
    NewNames names = test.folders;
    names["in"] = "out";
    const ApplyResult result = run.apply(names, true);
    ASSERT_EQ(run.tree.state(), run.expected(names));
    run.tree.make({"files/B/in/"});  // in the way of what came from A
    EXPECT_EQ(undoRenaming(result.log_path, {}).left_alone(), 1U);
    EXPECT_THAT(run.tree.names_in("files/A"), ElementsAre("in", "out"));
    std::filesystem::remove(run.tree / "files/A/in");
    // Now that B is home, another "out" in it is not what came from A.
    run.tree.make({"files/B/out/"});
    State expected = run.before;
    expected["B/out"] = run.tree.state().at("B/out");
    EXPECT_EQ(undoRenaming(result.log_path, {}).left_alone(), 0U);
    EXPECT_EQ(run.tree.state(), expected);
  }
}

}  // namespace
}  // namespace brindle::test
