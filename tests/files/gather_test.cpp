#include "files/gather.h"

#include <gtest/gtest.h>

#include <algorithm>

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

  TempTree tree_;
  FileList files_;
  GatherResult result_;
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
  EXPECT_EQ(result_.hidden_paths, 1U);
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

TEST_F(Gather, MissingPathsAreItemsAndCancelStops) {
  EXPECT_EQ(add({"gone"}, {}), (Names{"gone"}));
  std::atomic<bool> cancel{true};
  const GatherResult result = addFiles(files_, Names{tree_.path()}, {}, nullptr, {&cancel, nullptr});
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(files_.size(), 1U);
}

}  // namespace
}  // namespace brindle
