#include "list/open_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "list/file_list.h"
#include "list/file_order.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;

FolderIdentity identity_of(const FolderHandle& handle) {
  FolderIdentity identity;
  EXPECT_TRUE(handle.identity(identity));
  return identity;
}

class OpenFolders : public testing::Test {
 protected:
  OpenFolders() {
    tree_.make({"top/a/x", "top/a/sub/x", "top/b/x", "outside/sub/x"});
    for (const char* path : {"top", "top/a", "top/a/sub", "top/b"}) list(path);
  }
  FolderId id(std::string_view path) { return folders_.intern(tree_ / path); }
  void list(std::string_view path) {
    OpenFolder open;
    open.open_to_list(folders_, id(path));
    folders_.set_identity(id(path), identity_of(open.handle()));
  }
  int error_of(std::string_view path) {
    OpenFolder open;
    open.open(folders_, id(path));
    return open.handle().error();
  }
  void swap_for(const std::string& path, const std::string& with_link_to) const {
    std::filesystem::rename(path, path + ".away");
    std::filesystem::create_symlink(with_link_to, path);
  }

  const TempTree tree_;
  FolderTable folders_;
};

TEST_F(OpenFolders, AreThoseThatWereListed) {
  EXPECT_EQ(error_of("top/a"), 0);
  std::filesystem::rename(tree_ / "top/a", tree_ / "top/c");
  EXPECT_EQ(error_of("top/a"), ENOENT);
  std::filesystem::rename(tree_ / "top/b", tree_ / "top/a");
  EXPECT_EQ(error_of("top/a"), ESTALE);
  folders_.move(id("top/a"), id("top"), "c");
  EXPECT_EQ(error_of("top/c"), 0);
  EXPECT_EQ(error_of("top/c/sub"), 0);
}

TEST_F(OpenFolders, AreNeverReachedThroughALink) {
  OpenFolder from_above;
  from_above.open(folders_, id("top"));
  swap_for(tree_ / "top/a", tree_ / "outside");
  EXPECT_EQ(error_of("top/a"), ELOOP);
  EXPECT_EQ(error_of("top/a/sub"), ELOOP);
  from_above.open(folders_, id("top/a"));
  EXPECT_EQ(from_above.handle().error(), ELOOP);
  swap_for(tree_ / "top", tree_ / "outside");
  EXPECT_EQ(error_of("top/b"), ELOOP);
}

// Far down, neighbours are reached from the folder at hand: up and down again, and only where it is still below the
// folder that was listed.
TEST_F(OpenFolders, AreThoseThatWereListedFarDownToo) {
  std::string deep = "top/a";
  for (int depth = 0; depth < 60; ++depth) {
    deep += "/d";
    tree_.make({deep + "/left/x", deep + "/right/x/"});
    for (const char* name : {"", "/left", "/right", "/right/x"}) list(deep + name);
  }
  OpenFolder open;
  for (const char* name : {"/left", "/right", "/left", "/right/x", "/left", "/../right", "/../d/left"}) {
    const std::string path = std::filesystem::path(deep + name).lexically_normal().string();
    open.open(folders_, id(path));
    EXPECT_EQ(identity_of(open.handle()), *folders_.identity(id(path))) << name;
  }
  std::filesystem::rename(tree_ / deep, tree_ / "outside/d");
  swap_for(tree_ / "outside/d/right", tree_ / "outside/sub");
  open.open(folders_, id(deep + "/right"));
  EXPECT_EQ(open.handle().error(), ELOOP);
  std::filesystem::rename(tree_ / "outside/d/left", tree_ / "outside/left");
  open.open(folders_, id(deep + "/left"));
  EXPECT_EQ(open.handle().error(), ENOENT);
}

}  // namespace
}  // namespace brindle
