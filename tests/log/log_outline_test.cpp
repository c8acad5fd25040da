#include "log/log_outline.h"

#include <gtest/gtest.h>

#include "support/log_support.h"

namespace brindle::test {
namespace {

struct OutlineCase {
  const char* what;
  std::vector<Pair> entries;
  std::size_t folders;
  const char* common_folder;
  const char* old_name;
  const char* new_name;
};

TEST(LogOutline, tells_folders_and_first_pair) {
  const std::vector<OutlineCase> cases = {
      {"nothing", {}, 0, "", "", ""},
      {"one folder", {{"/p/a", "/p/b"}, {"/p/c", "/p/d"}}, 1, "/p", "a", "b"},
      {"two side by side", {{"/p/ab/1", "/p/ab/2"}, {"/p/ac/1", "/p/ac/2"}, {"/p/ab/3", "/p/ab/4"}}, 2, "/p", "1", "2"},
      {"one in the other", {{"/p/q/r/1", "/p/q/r/2"}, {"/p/q/1", "/p/q/2"}}, 2, "/p/q", "1", "2"},
      {"the root", {{"/a", "/b"}, {"/p/a", "/p/b"}}, 2, "/", "a", "b"},
      {"nothing in common", {{"/pa/1", "/pa/2"}, {"/pb/1", "/pb/2"}}, 2, "/", "1", "2"},
      {"signs of the format",
       {{"/a&b\"<\n/1\"", "/a&b\"<\n/ -> "}, {"/a&b\"<\n/:", "/a&b\"<\n/x"}},
       1,
       "/a&b\"<\n",
       "1\"",
       " -> "},
      {"bytes that XML cannot hold",
       {{"/p\x01/a\x02", "/p\x01/b"}, {"/p\x03/a\x02", "/p\x03/b"}, {"/p\x01/c", "/p\x01/\xff"}},
       2,
       "/",
       "a\x02",
       "b"},
  };
  for (const OutlineCase& each : cases) {
    SCOPED_TRACE(each.what);
    const LogTree tree;
    const std::string path = make_log(tree.logs(), each.entries);
    std::string other_layout = content_of(path);
    other_layout.insert(other_layout.find("<files"), "<!-- by hand -->");
    write_file(path + "2", other_layout);
    for (const std::string& log : {path, path + "2"}) {
      const Result<LogOutline> outline = read_log_outline(log);
      ASSERT_TRUE(outline.ok()) << outline.reason();
      EXPECT_EQ(outline->folders, each.folders);
      EXPECT_EQ(outline->common_folder, each.common_folder);
      EXPECT_EQ(outline->old_name, each.old_name);
      EXPECT_EQ(outline->new_name, each.new_name);
    }
  }
}

// Longer than what is read at once, and cut off anywhere.
TEST(LogOutline, goes_on_from_piece_to_piece_and_refuses_what_is_cut_off) {
  const LogTree tree;
  std::vector<Pair> entries;
  for (int i = 0; i < 9000; ++i) {
    const std::string folder = "/top/" + std::to_string(i / 1000) + "/";
    entries.emplace_back(folder + std::to_string(i), folder + "x" + std::to_string(i));
  }
  const std::string path = make_log(tree.logs(), entries);
  const std::string whole = content_of(path);
  ASSERT_GT(whole.size(), std::size_t{700} * 1024);
  EXPECT_EQ(read_log_outline(path)->folders, 9U);
  EXPECT_EQ(read_log_outline(path)->common_folder, "/top");
  for (const std::size_t size :
       {whole.size() - 1, whole.size() - 9, whole.size() - 12, whole.size() / 2, std::size_t{0}}) {
    write_file(path, whole.substr(0, size));
    EXPECT_EQ(read_log_outline(path).ok(), readLogFile(path).ok()) << size;
  }
  EXPECT_EQ(read_log_outline(tree.logs() + "/none").reason(), readLogFile(tree.logs() + "/none").reason());
}

}  // namespace
}  // namespace brindle::test
