#include "platform/move.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;

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

}  // namespace
}  // namespace brindle
