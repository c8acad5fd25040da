// Folders and paths, where links lead and however long they are.

#include "platform/folder_handle.h"

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/real_path.h"
#include "support/temp_tree.h"

namespace brindle::test {
namespace {

/// From now on openat2(2) fails with `error` in this process.
void refuse_openat2(unsigned error) {
  std::array<sock_filter, 4> program = {{
      {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
      {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, SYS_openat2},
      {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | error},
      {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
  }};
  const sock_fprog filter{program.size(), program.data()};
  if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0)
    ::_exit(77);
}

/// A path of more than PATH_MAX bytes below a folder, its folders made.
std::string make_deep(std::string path) {
  const std::string step(200, 'd');
  FolderHandle at = FolderHandle::open(path);
  for (int depth = 0; depth < 40; ++depth) {
    ::mkdirat(at.descriptor(), step.c_str(), 0700);
    at = at.open_child(step.c_str());
    path += "/" + step;
  }
  ::mkdirat(at.descriptor(), "last", 0700);
  return path;
}

/// The errors of opening paths of the tree without following a link, in order; 0 for those that could be opened.
std::vector<int> errors_of_real_paths(const TempTree& tree, const std::string& deep) {
  std::vector<int> errors;
  const auto open = [&errors](const std::string& path) { errors.push_back(FolderHandle::open_real(path).error()); };
  for (const char* path : {"real/sub", "real//sub/", "link", "link/", "link/sub", "real/way/x", "file", "file/x",
                           "real/gone", "gone/x", "dangling", "closed/sub"})
    open(tree / path);
  for (const std::string& path : {std::string("/"), std::string(), deep + "/last", deep + "/gone"}) open(path);
  open(tree.path() + "/link/" + deep.substr(tree.path().size() + 1));
  return errors;
}

class RealFolders : public testing::Test {
 protected:
  RealFolders() {
    tree_.make(
        {"real/sub/", "real/way -> sub", "real/sub/x/", "link -> .", "file", "dangling -> nowhere", "closed/sub/"});
    ::chmod((tree_ / "closed").c_str(), 0311);
    deep_ = make_deep(tree_.path());
  }
  const TempTree tree_;
  std::string deep_;
  const std::vector<int> expected_ = {0,      0,     ELOOP, ELOOP, ELOOP,  ELOOP, ENOTDIR, ENOTDIR, ENOENT,
                                      ENOENT, ELOOP, 0,     0,     ENOENT, 0,     ENOENT,  ELOOP};
};

TEST_F(RealFolders, AreOpenedThroughNoLink) {
  EXPECT_EQ(errors_of_real_paths(tree_, deep_), expected_);
  const FolderHandle top = FolderHandle::open_real(tree_.path());
  EXPECT_EQ(top.open_child("link").error(), ELOOP);
  EXPECT_EQ(top.open_child("file").error(), ENOTDIR);
  EXPECT_TRUE(FolderHandle::open(tree_ / "link/real/way/x"));
}

// Old kernels, and sandboxes that know no newer calls.
TEST_F(RealFolders, AreOpenedThroughNoLinkWhereTheSystemHelpsLess) {
  for (const unsigned error : {unsigned{ENOSYS}, unsigned{EPERM}}) {
    const auto same_in_child = [&] {
      refuse_openat2(error);
      ::_exit(errors_of_real_paths(tree_, deep_) == expected_ ? 0 : 1);
    };
    EXPECT_EXIT(same_in_child(), testing::ExitedWithCode(0), "") << error;
  }
}

TEST_F(RealFolders, AreOpenedWhateverTheLengthOfTheirPath) {
  EntryFacts facts;
  for (const FolderHandle& deep : {FolderHandle::open(deep_), FolderHandle::open_real(deep_)})
    EXPECT_TRUE(deep && deep.look_up("last", facts));
  EXPECT_EQ(FolderHandle::open(deep_ + "/gone").error(), ENOENT);
}

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
  const std::string below = make_deep(tree / "real").substr((tree / "real").size());
  RealPaths real_paths("");
  for (const char* top : {"link", "real"}) {
    EXPECT_EQ(real_paths.of(tree / top + below + "/f").path, tree / "real" + below + "/f");
    EXPECT_EQ(real_paths.of(tree / top + below + "/.").path, tree / "real" + below);
  }
}

}  // namespace
}  // namespace brindle::test
