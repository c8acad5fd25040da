// Folders of the list: which one is opened, and where their items go when they are renamed.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "list/file_list.h"
#include "list/file_order.h"
#include "list/open_folder.h"
#include "list/path_follower.h"
#include "support/temp_tree.h"

namespace brindle::test {
namespace {

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

using Paths = std::vector<std::string>;

std::string folder_of(const std::string& path) {
  return path.rfind('/') == 0 ? "/" : path.substr(0, path.rfind('/'));
}
std::string name_of(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

/// The rule as a person would write it down: over every path, as text.
void follow_as_text(Paths& paths, const std::string& old_path, const std::string& target) {
  for (std::string& path : paths) {
    if (path.starts_with(old_path + "/")) path.replace(0, old_path.size(), target);
  }
}

class Followed {
 public:
  explicit Followed(const Paths& paths) {
    for (const std::string& path : paths) files_.add(files_.folders().intern(folder_of(path)), name_of(path), 0, 0);
    follower_.emplace(files_);
  }
  void rename(std::size_t row, const std::string& new_name) {
    const std::string old_name(files_[row].name());
    follower_->rename(files_[row].folder, old_name, new_name);
    files_.set_path(row, files_[row].folder, new_name);
  }
  Paths paths() const {
    Paths paths;
    for (std::size_t row = 0; row < files_.size(); ++row) paths.push_back(files_.path(row));
    return paths;
  }

 private:
  FileList files_;
  std::optional<PathFollower> follower_;
};

TEST(PathFollower, MovesWhatLiesBelowAndNothingElse) {
  Followed list({"/x/old", "/x/old/sub", "/x/old/sub/f", "/x/older/f", "/x/olden", "/y/x/old/f", "/x/old/x/old/f"});
  list.rename(0, "new");
  EXPECT_EQ(list.paths(),
            (Paths{"/x/new", "/x/new/sub", "/x/new/sub/f", "/x/older/f", "/x/olden", "/y/x/old/f", "/x/new/x/old/f"}));
}

// Few letters, so that names begin alike, paths repeat themselves and folders come to lie upon each other.
TEST(PathFollower, AgreesWithTheRuleOnAnyTree) {
  std::mt19937 random(7);
  const auto pick = [&random](std::size_t below) { return static_cast<std::size_t>(random() % below); };
  const std::vector<std::string> names = {"a", "b", "aa", "ab", "abc", "ba"};
  for (int round = 0; round < 3000; ++round) {
    Paths paths;
    for (std::size_t i = 3 + pick(12); i > 0; --i) {
      std::string path;
      for (std::size_t depth = 1 + pick(6); depth > 0; --depth) path += "/" + names[pick(names.size())];
      if (std::find(paths.begin(), paths.end(), path) == paths.end()) paths.push_back(path);
    }
    Followed list(paths);
    Paths expected = paths;
    for (std::size_t step = 0; step < 6; ++step) {
      const std::size_t row = pick(expected.size());
      const std::string new_name = names[pick(names.size())] + (pick(2) == 0 ? "a" : "");
      const std::string old_path = expected[row];
      const std::string folder = folder_of(old_path);
      const std::string target = (folder == "/" ? "" : folder) + "/" + new_name;
      const bool is_taken = std::any_of(expected.begin(), expected.end(), [&](const std::string& path) {
        return path == target || path.starts_with(target + "/");
      });
      if (is_taken) continue;  // the disk refuses such a rename
      follow_as_text(expected, old_path, target);
      expected[row] = target;
      list.rename(row, new_name);
      ASSERT_EQ(list.paths(), expected) << "round " << round << ": " << old_path << " to " << target;
    }
  }
}

TEST(PathFollower, WorkGrowsWithWhatMoves) {
  // 60 chains of 400 folders each: copying the paths below every renamed folder would be 2 GB.
  Paths paths;
  for (int chain = 0; chain < 60; ++chain) {
    std::string path = "/c" + std::to_string(chain);
    for (int depth = 0; depth < 400; ++depth) paths.push_back(path += "/dd");
  }
  Followed list(paths);
  for (std::size_t row = 0; row < paths.size(); ++row) list.rename(row, "ee");
  EXPECT_EQ(name_of(list.paths().back()), "ee");
  EXPECT_EQ(list.paths().back().find("dd"), std::string::npos);
}

}  // namespace
}  // namespace brindle::test
