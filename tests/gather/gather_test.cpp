#include "gather/gather.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <utility>

#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;
using Names = std::vector<std::string>;

class Gather : public testing::Test {
 protected:
  Gather() {
    tree_.make({"top.txt", "sub/one", "sub/deep/two", "sub/empty/", ".hidden", ".git/config", "Thing.app/inside",
                "sub/.x", "link -> top.txt", "way -> sub"});
  }

  /// Adds paths (relative to the tree) and returns the whole list, relative; sorted, since disks list in any order.
  Names add(const Names& paths, const GatherOptions& options) {
    Names absolute;
    for (const std::string& path : paths) absolute.push_back(path.empty() ? tree_.path() : tree_ / path);
    result_ = addFiles(files_, absolute, options, nullptr, {});
    Names list = listed();
    std::sort(list.begin(), list.end());
    return list;
  }
  Names listed() const {
    Names list;
    for (std::size_t row = 0; row < files_.size(); ++row)
      list.push_back(files_.path(row).substr(tree_.path().size() + 1));
    return list;
  }

  /// What could not be read, relative, with errno.
  std::map<std::string, int> unreadable() const {
    std::map<std::string, int> found;
    for (const UnreadablePath& path : result_.unreadable)
      found[files_.folders().path(path.path).substr(tree_.path().size() + 1)] = path.error;
    return found;
  }

  TempTree tree_;
  FileList files_;
  GatherResult result_;
};

/// Puts links in the places of folders that the walk has seen and not entered yet.
class Swapper : public ProgressSink {
 public:
  Swapper(std::string top, std::string target) : top_(std::move(top)), target_(std::move(target)) {}
  void report(const Progress& /*progress*/) override {
    if (std::exchange(done_, true)) return;
    for (const auto& entry : std::filesystem::directory_iterator(top_)) {
      if (!entry.is_directory() || entry.is_symlink()) continue;
      std::filesystem::rename(entry.path(), target_ + "/" + entry.path().filename().string());
      std::filesystem::create_symlink(target_, entry.path());
    }
  }

 private:
  std::string top_;
  std::string target_;
  bool done_ = false;
};

TEST_F(Gather, FilesWithSubfolders) {
  EXPECT_EQ(add({""}, {}), (Names{"Thing.app", "link", "sub/deep/two", "sub/one", "top.txt", "way"}));
  EXPECT_EQ(result_.searchFilesCount, 6U);
}

TEST_F(Gather, HiddenNamesOnRequestOnly) {
  EXPECT_EQ(
      add({"", ".hidden"}, {.include_hidden = true}),
      (Names{".git/config", ".hidden", "Thing.app", "link", "sub/.x", "sub/deep/two", "sub/one", "top.txt", "way"}));
  EXPECT_EQ(add({".hidden"}, {}).size(), 9U);
  EXPECT_EQ(result_.hidden_paths, (Names{tree_ / ".hidden"}));
}

TEST_F(Gather, FilesWithoutSubfoldersLeaveFoldersAlone) {
  EXPECT_EQ(add({"sub", "top.txt", "Thing.app"}, {.isIncludeSubFolders = false}), (Names{"Thing.app", "top.txt"}));
}

TEST_F(Gather, FoldersBelowTheGivenOnes) {
  EXPECT_EQ(add({"", "top.txt"}, {.isFolders = true}), (Names{"sub", "sub/deep", "sub/empty"}));
  // The given folder itself is gone from the list, but not from the set of what was ever taken.
  EXPECT_EQ(add({""}, {.isFolders = true}).size(), 3U);
  EXPECT_EQ(result_.searchFilesCount, 0U);
  // Each folder before what it holds.
  const Names list = listed();
  EXPECT_LT(std::find(list.begin(), list.end(), "sub"), std::find(list.begin(), list.end(), "sub/deep"));
}

TEST_F(Gather, FoldersThemselvesWithoutSubfolders) {
  EXPECT_EQ(add({"sub", "sub/deep", "way"}, {.isFolders = true, .isIncludeSubFolders = false}),
            (Names{"sub", "sub/deep"}));
}

TEST_F(Gather, APathIsListedOnceUntilItIsRemoved) {
  add({"top.txt", "top.txt", "sub/one"}, {});
  EXPECT_EQ(add({""}, {}).size(), 6U);
  EXPECT_EQ(result_.searchFilesCount, 4U);
  files_.remove_if([](const ItemRecord& record) { return record.name() == "top.txt"; });
  EXPECT_EQ(add({"top.txt"}, {}).size(), 5U);
  files_.resetFilesDic();
  EXPECT_EQ(add({"top.txt"}, {}).size(), 6U);
}

TEST_F(Gather, AFolderStandsWhereTheListingHasIt) {
  for (int i = 0; i < 40; ++i) tree_.make({"many/" + std::to_string(i) + "/x", "many/f" + std::to_string(i)});
  add({"many"}, {});
  // What lies in a subfolder stands together, and files come before and after it as the disk lists them.
  const Names list = listed();
  Names expected;
  FolderReader reader;
  const FolderHandle folder = FolderHandle::open(tree_ / "many");
  FolderEntry entry;
  for (reader.start(folder); reader.next(entry);) {
    expected.push_back("many/" + std::string(entry.name) + (entry.kind == EntryKind::folder ? "/x" : ""));
  }
  EXPECT_EQ(list, expected);
}

TEST_F(Gather, WithTheListMethodItemsStartAtNoChanges) {
  add({""}, {.renames_from_list = true});
  EXPECT_TRUE(std::all_of(files_.items().begin(), files_.items().end(),
                          [](const ItemRecord& record) { return record.status == ItemStatus::no_changes; }));
}

TEST_F(Gather, PathsMayPassThroughLinks) {
  EXPECT_EQ(add({"way/one", "way/deep/../one", "./sub/../way/deep", "link"}, {}),
            (Names{"link", "sub/deep/two", "sub/one"}));
  EXPECT_EQ(add({"way"}, {}).size(), 4U);
  EXPECT_EQ(add({"way/", "way/."}, {}).size(), 4U) << "the link, and the folder it leads to, whose files are listed";
}

TEST_F(Gather, AFolderThatBecomesALinkIsNotEntered) {
  const TempTree elsewhere;
  elsewhere.make({"foreign"});
  const std::string top = tree_ / "many";
  for (int i = 0; i < 200; ++i) tree_.make({"many/" + std::to_string(i) + "/x", "many/f" + std::to_string(i)});
  Swapper swapper(top, elsewhere.path());
  const GatherResult result = addFiles(files_, Names{top}, {}, nullptr, {nullptr, &swapper});
  EXPECT_GT(result.unreadable.size(), 0U);
  for (const UnreadablePath& path : result.unreadable) EXPECT_EQ(path.error, ELOOP);
  for (const ItemRecord& record : files_.items()) EXPECT_NE(record.name(), "foreign");
}

TEST_F(Gather, WhatCannotBeReadIsTold) {
  tree_.make({"closed/x", "half/x", "half/deep/y", "loop -> loop", "file"});
  ::chmod((tree_ / "closed").c_str(), 0);
  ::chmod((tree_ / "half").c_str(), 0111);
  const auto gather_as_nobody = [this] {
    // As root nothing is closed.
    if (::geteuid() == 0 && ::setresuid(65534, 65534, 65534) != 0) ::_exit(77);
    ::chmod(tree_.path().c_str(), 0755);
    add({"", "loop/x", "closed/x", "half/x", "half/deep"}, {});
    const std::map<std::string, int> expected = {
        {"closed", EACCES}, {"half", EACCES}, {"loop/x", ELOOP}, {"closed/x", EACCES}};
    const Names all = listed();
    const bool has_what_can_be = std::ranges::count(all, "half/x") == 1 && std::ranges::count(all, "half/deep/y") == 1;
    ::_exit(unreadable() == expected && has_what_can_be ? 0 : 1);
  };
  ::chmod(tree_.path().c_str(), 0755);
  EXPECT_EXIT(gather_as_nobody(), testing::ExitedWithCode(0), "");
  for (const char* folder : {"closed", "half"}) ::chmod((tree_ / folder).c_str(), 0700);
}

TEST_F(Gather, AFolderThatIsMissingIsToldAndAFileIsAnItem) {
  EXPECT_EQ(add({"gone", "sub/gone", "top.txt/gone"}, {.isFolders = true}), Names());
  EXPECT_EQ(unreadable(),
            (std::map<std::string, int>{{"gone", ENOENT}, {"sub/gone", ENOENT}, {"top.txt/gone", ENOENT}}));
}

// Thousands of folders, one in the other, with a second one beside each: the way from one to the next is short.
TEST_F(Gather, NoTreeIsTooDeep) {
  const int depth = 3000;
  FolderHandle at = FolderHandle::open(tree_.path());
  for (int level = 0; level < depth; ++level) {
    for (const char* name : {"d", "side"}) ASSERT_EQ(::mkdirat(at.descriptor(), name, 0700), 0);
    ASSERT_EQ(::mknodat(at.descriptor(), "side/x", S_IFREG | 0600, 0), 0);
    at = at.open_child("d");
  }
  add({""}, {});
  EXPECT_EQ(result_.unreadable.size(), 0U);
  EXPECT_EQ(result_.searchFilesCount, 6U + depth);
}

TEST_F(Gather, MissingPathsAreItemsAndCancelStops) {
  EXPECT_EQ(add({"gone"}, {}), (Names{"gone"}));
  std::atomic<bool> cancel{true};
  const GatherResult result = addFiles(files_, Names{tree_.path()}, {}, nullptr, {&cancel, nullptr});
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(files_.size(), 1U);
}

}  // namespace
}  // namespace brindle
