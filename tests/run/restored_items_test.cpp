#include "run/restored_items.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brindle {
namespace {

using ::testing::ElementsAre;

void add(FileList& files, const std::string& path) {
  const std::size_t slash = path.rfind('/');
  files.add(files.folders().intern(path.substr(0, slash)), path.substr(slash + 1), 0, 0);
}

std::vector<std::string> paths(const FileList& files) {
  std::vector<std::string> paths;
  for (std::size_t row = 0; row < files.size(); ++row) paths.push_back(files.path(row));
  return paths;
}

TEST(RestoredItems, take_along_what_lies_below_them_and_no_sibling) {
  FileList files;
  for (const char* path : {"/x/new", "/x/new/sub2", "/x/new/sub2/f", "/x/newer/f", "/y/f"}) add(files, path);
  files.set_status(0, ItemStatus::renaming_ok);
  files.set_status(4, ItemStatus::no_changes);
  {
    RestoredItems items(files);
    items.moved("/x/new", "sub2", "/x/new", "sub");
    items.moved("/x", "new", "/x", "old");
    items.moved("/z", "f", "/z", "g");           // not listed
    items.moved("/x", "newer", "/y/deep", "n");  // not listed itself, but what is below
  }
  EXPECT_THAT(paths(files), ElementsAre("/x/old", "/x/old/sub", "/x/old/sub/f", "/y/deep/n/f", "/y/f"));
  EXPECT_EQ(files[0].status, ItemStatus::none);
  EXPECT_EQ(files[4].status, ItemStatus::no_changes) << "was not moved";
  EXPECT_FALSE(files.add(files.folders().intern("/x/old"), "sub", 0, 0)) << "the duplicate set knows the new paths";
}

TEST(RestoredItems, go_on_when_two_folders_come_together_or_paths_run_in_a_ring) {
  FileList files;
  for (const char* path : {"/x/b/one", "/x/a/two", "/x/a/b/three"}) add(files, path);
  {
    RestoredItems items(files);
    items.moved("/x/b", "one", "/x/b", "1");
    items.moved("/x", "b", "/x", "a");  // the list still holds items of an "a" that is gone
    items.moved("/x/a", "1", "/x/a", "first");
    items.moved("/x", "a", "/x/a/b", "c");  // by way of a link
  }
  EXPECT_THAT(paths(files), ElementsAre("/x/a/first", "/x/a/two", "/x/a/b/three"));
}

TEST(RestoredItems, pass_their_names_round_listed_or_not) {
  FileList files;
  for (const char* path : {"/x/a", "/x/a/in a", "/x/b", "/x/c", "/x/c/in c", "/y/2"}) add(files, path);
  {
    RestoredItems items(files);
    items.moved("/x", "a", "/x", "c");
    items.moved("/x", "c", "/x", "b");
    items.moved("/x", "b", "/x", "a");
    items.moved("/y", "2", "/y", "1");  // with one that is not listed
    items.moved("/y", "1", "/y", "2");
  }
  EXPECT_THAT(paths(files), ElementsAre("/x/c", "/x/c/in a", "/x/a", "/x/b", "/x/b/in c", "/y/1"));
}

}  // namespace
}  // namespace brindle
