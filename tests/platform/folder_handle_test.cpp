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

#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;

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

/// A path of more than PATH_MAX bytes below the tree, its folders made.
std::string make_deep(const TempTree& tree) {
  const std::string step(200, 'd');
  std::string path = tree.path();
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
    deep_ = make_deep(tree_);
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

}  // namespace
}  // namespace brindle
