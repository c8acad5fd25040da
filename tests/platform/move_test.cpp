#include "platform/move.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <ostream>

#include "support/temp_tree.h"

namespace brindle::test {
namespace {

TEST(Move, NothingIsEverReplaced) {
  const TempTree tree;
  tree.make({"a", "b", "folder/", "full/x", "dangling -> nowhere"});
  const auto before = tree.inodes();
  const FolderHandle folder = FolderHandle::open(tree.path());
  for (const char* from : {"a", "folder", "dangling"}) {
    for (const char* to : {"b", "full", "dangling", "a"}) {
      if (std::string_view(from) == to) continue;
      EXPECT_EQ(move_exclusively(folder, from, folder, to), EEXIST) << from << " " << to;
    }
  }
  EXPECT_EQ(tree.inodes(), before);
  EXPECT_EQ(move_exclusively(folder, "missing", folder, "c"), ENOENT);
  EXPECT_EQ(move_exclusively(folder, "dangling", folder, "moved"), 0);
  EXPECT_EQ(tree.inodes().at("moved"), before.at("dangling"));
}

TEST(Move, ACaseChangeNeedsOneEntryThatAnswersToBothNames) {
  const TempTree tree;
  tree.make({"photo.jpg"});
  std::filesystem::create_hard_link(tree / "photo.jpg", tree / "Photo.jpg");
  const FolderHandle folder = FolderHandle::open(tree.path());
  // Two hard links are two files, though both names lead to the same inode.
  EXPECT_EQ(move_changing_case(folder, "photo.jpg", "Photo.jpg"), EEXIST);
  EXPECT_EQ(move_changing_case(folder, "photo.jpg", "other.jpg"), EEXIST);
  EXPECT_EQ(tree.names().size(), 2U);
}

using Names = std::vector<std::string>;

/// Where a move takes a name aside: written down in many a crashed folder, so it must not change.
constexpr const char* aside_of_old = ".brindle-1a0fad1921d08076.old0";  // of "old"
constexpr const char* aside_of_new = ".brindle-2138d5192571b731.old0";  // of "new"

class Watcher final : public MoveWatcher {
 public:
  explicit Watcher(std::function<void()> then = {}) : then_(std::move(then)) {}
  void half_step() noexcept override {
    ++heard;
    if (then_) then_();
  }
  int heard = 0;

 private:
  std::function<void()> then_;
};

TEST(TwoStepMove, MovesEveryKindAndReplacesNothing) {
  const TempTree tree;
  tree.make({"file", "folder/x", "link -> nowhere", "taken", "taken folder/"});
  const auto before = tree.inodes();
  const FolderHandle folder = FolderHandle::open(tree.path());
  Watcher watcher;
  for (const char* from : {"file", "folder", "link"}) {
    for (const char* to : {"taken", "taken folder"})
      EXPECT_EQ(move_in_two_steps(folder, from, folder, to, &watcher), EEXIST) << from << " " << to;
  }
  EXPECT_EQ(move_in_two_steps(folder, "missing", folder, "new", &watcher), ENOENT);
  EXPECT_EQ(watcher.heard, 0) << "what stands at the target is not ours to settle later";
  EXPECT_EQ(tree.inodes(), before);
  for (const std::string from : {"file", "folder", "link"}) {
    EXPECT_EQ(move_in_two_steps(folder, from.c_str(), folder, ("new " + from).c_str(), &watcher), 0);
    EXPECT_EQ(tree.inodes().at("new " + from), before.at(from));
  }
  EXPECT_EQ(watcher.heard, 3);
  EXPECT_EQ(tree.inodes().size(), before.size());
}

TEST(TwoStepMove, LeavesWhatComesToTheTargetOnTheWay) {
  const TempTree tree;
  tree.make({"file", "folder/x"});
  const FolderHandle folder = FolderHandle::open(tree.path());
  Watcher file([&] { tree.make({"new file"}); });
  EXPECT_EQ(move_in_two_steps(folder, "file", folder, "new file", &file), EEXIST);
  Watcher other([&] { tree.make({"new folder/"}); });
  EXPECT_EQ(move_in_two_steps(folder, "folder", folder, "new folder", &other), EEXIST);
  EXPECT_EQ(tree.names(), (Names{"file", "folder", "folder/x", "new file", "new folder"}));
}

/// A move from "old" to "new" as it was cut off.
struct CutOff {
  const char* what;
  Names entries;  ///< "a = b" is a hard link; the entry to be moved is the first
  SettledMove settled;
  Names left;  ///< and nothing else
  bool knows_inode = true;
};

std::ostream& operator<<(std::ostream& out, const CutOff& cut_off) {
  return out << cut_off.what;
}

class SettlesCutOffMove : public testing::TestWithParam<CutOff> {};

void make(const TempTree& tree, const Names& entries) {
  for (const std::string& entry : entries) {
    const std::size_t link = entry.find(" = ");
    if (link == std::string::npos)
      tree.make({entry});
    else
      std::filesystem::create_hard_link(tree / entry.substr(link + 3), tree / entry.substr(0, link));
  }
}

TEST_P(SettlesCutOffMove, AndDoesSoOnce) {
  const CutOff& cut_off = GetParam();
  const TempTree tree;
  make(tree, cut_off.entries);
  const std::string first = cut_off.entries[0].substr(0, cut_off.entries[0].find('/'));
  const std::uint64_t inode = cut_off.knows_inode ? tree.inodes().at(first) : 0;
  const FolderHandle folder = FolderHandle::open(tree.path());
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(settle_two_step_move(folder, "old", folder, "new", inode), cut_off.settled);
    EXPECT_EQ(tree.names(), cut_off.left);
  }
}

const std::string old_aside = aside_of_old;
const std::string new_aside = aside_of_new;
constexpr SettledMove moved = SettledMove::moved;
constexpr SettledMove not_moved = SettledMove::not_moved;
constexpr SettledMove unclear = SettledMove::unclear;

INSTANTIATE_TEST_SUITE_P(
    Every, SettlesCutOffMove,
    testing::Values(
        CutOff{"before the link", {"old"}, not_moved, {"old"}},
        CutOff{"linked", {"old", "new = old"}, not_moved, {"old"}},
        CutOff{"linked, inode not known", {"old", "new = old"}, not_moved, {"old"}, false},
        CutOff{"old name aside", {old_aside, "new = " + old_aside}, moved, {"new"}},
        CutOff{"old name gone", {"new"}, moved, {"new"}},
        CutOff{"saved anew behind the link", {"new", "old"}, moved, {"new", "old"}},
        CutOff{"saved anew and taken aside", {"new", old_aside}, moved, {"new", "old"}},
        CutOff{"saved anew twice", {"new", old_aside, "old"}, moved, {old_aside, "new", "old"}},
        CutOff{"given back, not removed", {"new", old_aside, "old = " + old_aside}, moved, {"new", "old"}},
        CutOff{"settling, new name aside", {"old", new_aside + " = old"}, not_moved, {"old"}},
        CutOff{"settling, another file at the new name aside", {"old", new_aside}, not_moved, {"new", "old"}},
        CutOff{"another file at the new name", {"old", "new"}, not_moved, {"new", "old"}},
        CutOff{"two files, inode not known", {"old", "new"}, unclear, {"new", "old"}, false},
        CutOff{"only aside", {old_aside}, not_moved, {"old"}}, CutOff{"nothing left", {"else"}, unclear, {"else"}},
        CutOff{"folder, stand-in", {"old/x", "new/"}, not_moved, {"old", "old/x"}},
        CutOff{"folder, stand-in, inode not known", {"old/x", "new/"}, not_moved, {"old", "old/x"}, false},
        CutOff{"folder moved", {"new/x"}, moved, {"new", "new/x"}},
        CutOff{"empty folder moved, another made", {"new/", "old/"}, moved, {"new", "old"}},
        CutOff{"something in the stand-in", {"old/x", "new/y"}, not_moved, {"new", "new/y", "old", "old/x"}}));

}  // namespace
}  // namespace brindle::test
