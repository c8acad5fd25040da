#include "platform/real_path.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <string_view>

#include "platform/folder_handle.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;

TEST(RealPaths, HaveRealParentsAndTheLastComponentAsItIs) {
  const TempTree tree;
  tree.make({"real/sub/file", "real/up -> ..", "home -> real", "far/away -> ../home/sub", "file", "gone -> nowhere",
             "loop -> loop", "real/...", "real/\xff\n"});
  const std::string absolute = tree / "real/sub/file";
  const std::string through_link = tree / "home/sub";
  struct Case {
    std::string_view given;
    std::string_view real;  // below the tree
    int error = 0;
  };
  const Case cases[] = {
      {"sub/file", "real/sub/file"},
      {"./sub//file", "real/sub/file"},
      {absolute, "real/sub/file"},
      {through_link, "real/sub"},
      {"...", "real/..."},
      {"\xff\n", "real/\xff\n"},
      // a folder, whatever way it is named
      {".", "real"},
      {"./", "real"},
      {"..", ""},
      {"sub/", "real/sub"},
      {"sub/.", "real/sub"},
      {"sub/../", "real"},
      {"up/real/sub/..", "real"},
      // a link is itself, unless the folder it leads to is named
      {"../home", "home"},
      {"../home//", "home"},
      {"../home/.", "real"},
      {"../home/./", "real"},
      {"../home/sub/../../file", "file"},
      {"../far/away", "far/away"},
      {"../far/away/file", "real/sub/file"},
      {"up/up", "up"},
      {"../gone", "gone"},
      {"../gone/", "gone"},
      {"../loop", "loop"},
      // what is not there
      {"sub/none", "real/sub/none"},
      {"none/none/x", "real/none/none/x"},
      {"../home/none/./x/", "real/none/x"},
      {"../gone/x", "nowhere/x"},
      {"../file/x", "file/x"},
      {"../file/", "file"},
      // what cannot be had
      {"../loop/x", "", ELOOP},
      {"none/../x", "", ENOENT},
      {"../file/..", "", ENOTDIR},
      {"", "", ENOENT},
  };
  RealPaths real_paths(tree / "real");
  for (const Case& c : cases) {
    const RealPath found = real_paths.of(c.given);
    EXPECT_EQ(found.error, c.error) << c.given;
    const std::string real = c.real.empty() ? tree.path() : tree / c.real;
    EXPECT_TRUE(c.error != 0 || found.path == real) << c.given << " is " << found.path;
  }
  EXPECT_EQ(RealPaths("/").of("a").path, "/a");
  EXPECT_EQ(RealPaths("").of("a").error, ENOENT);
  EXPECT_EQ(RealPaths("").of("//.//").path, "/");
  EXPECT_EQ(RealPaths("").of("/usr/../no such").path, "/no such");
}

TEST(RealPaths, AreHadWhateverTheirLength) {
  const TempTree tree;
  tree.make({"real/", "link -> real"});
  const std::string step(200, 'd');
  std::string below;
  FolderHandle at = FolderHandle::open(tree / "real");
  for (int depth = 0; depth < 40; ++depth) {
    ::mkdirat(at.descriptor(), step.c_str(), 0700);
    at = at.open_child(step.c_str());
    below += "/" + step;
  }
  RealPaths real_paths("");
  for (const char* top : {"link", "real"}) {
    EXPECT_EQ(real_paths.of(tree / top + below + "/f").path, tree / "real" + below + "/f");
    EXPECT_EQ(real_paths.of(tree / top + below + "/.").path, tree / "real" + below);
  }
}

}  // namespace
}  // namespace brindle
