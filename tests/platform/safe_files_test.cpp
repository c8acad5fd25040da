#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "platform/app_info.h"
#include "platform/atomic_file.h"
#include "platform/output_file.h"
#include "platform/trash.h"
#include "support/temp_tree.h"

namespace brindle::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

std::string content_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(AtomicFile, writes_a_whole_file_in_place_of_the_old_one) {
  const TempTree tree;
  tree.make({"file", "link -> file"});
  ::chmod((tree / "file").c_str(), 0640);
  EXPECT_EQ(write_file_atomically(tree / "link", "new").reason(), "");
  EXPECT_EQ(content_of(tree / "file"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(tree / "link"));
  struct stat status {};
  ASSERT_EQ(::stat((tree / "file").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
  EXPECT_THAT(write_file_atomically(tree / "nowhere/file", "new").reason(), HasSubstr("No such file"));
  EXPECT_THAT(tree.names(), ElementsAre("file", "link"));
}

TEST(AtomicFile, keeps_the_old_file_when_the_disk_is_full) {
  const TempTree tree;
  tree.make({"file"});
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit full{1000, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &full);
  const std::string error = write_file_atomically(tree / "file", std::string(2000, 'x')).reason();
  ::setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_THAT(error, HasSubstr("File too large"));
  EXPECT_EQ(content_of(tree / "file"), "file");
  EXPECT_THAT(tree.names(), ElementsAre("file"));
}

constexpr uid_t nobody = 65534;

struct stat status_of(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
  return status;
}

TEST(AtomicFile, takes_over_no_more_rights_than_a_file_of_ours_gave) {
  const TempTree tree;
  const mode_t umask_before = ::umask(022);
  const struct {
    uid_t owner;
    mode_t old_mode;
    mode_t new_mode;
  } cases[] = {{::geteuid(), 06755, 0755}, {::geteuid(), 0600, 0600}, {::geteuid(), 0666, 0666},
               {nobody, 06777, 0644},      {nobody, 0600, 0600},      {nobody, 0040, 0640}};
  for (const auto& each : cases) {
    if (each.owner == nobody && ::geteuid() != 0) continue;
    tree.make({"file"});
    ASSERT_EQ(::chown((tree / "file").c_str(), each.owner, static_cast<gid_t>(-1)), 0);
    ASSERT_EQ(::chmod((tree / "file").c_str(), each.old_mode), 0);
    const struct stat old = status_of(tree / "file");
    EXPECT_EQ(write_file_atomically(tree / "file", "new").reason(), "");
    const struct stat made = status_of(tree / "file");
    EXPECT_EQ(made.st_mode & 07777U, each.new_mode) << std::oct << each.old_mode;
    EXPECT_EQ(made.st_uid, ::geteuid());
    EXPECT_NE(made.st_ino, old.st_ino);
    ::unlink((tree / "file").c_str());
  }
  ::umask(umask_before);
}

TEST(AtomicFile, goes_through_no_link_that_another_user_may_have_planted) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can make another user's link";
  const TempTree tree;
  const struct {
    mode_t folder;
    uid_t link_owner;
    bool followed;
  } cases[] = {{01777, nobody, false}, {0777, nobody, false}, {0775, nobody, false},
               {0755, nobody, true},   {01777, 0, true},      {0775, 0, true}};
  for (const auto& each : cases) {
    tree.make({"file", "shared/link -> near", "shared/near -> ../file"});
    ASSERT_EQ(::lchown((tree / "shared/near").c_str(), each.link_owner, each.link_owner), 0);
    ASSERT_EQ(::chmod((tree / "shared").c_str(), each.folder), 0);
    const std::string error = write_file_atomically(tree / "shared/link", "new").reason();
    OutputFile output;
    EXPECT_EQ(output.open(tree / "shared/link").error(), each.followed ? 0 : foreign_link_error);
    EXPECT_EQ(error.find("another user's link") != std::string::npos, !each.followed) << error;
    EXPECT_EQ(content_of(tree / "file"), each.followed ? "new" : "file") << std::oct << each.folder;
    std::filesystem::remove_all(tree / "shared");
  }
}

TEST(OutputFile, replaces_a_file_wherever_it_lies) {
  const std::string path = "/dev/shm/brindle-test-" + std::to_string(::getpid());
  for (const std::string text : {"one", "two"}) {
    OutputFile output;
    if (!output.open(path).ok()) GTEST_SKIP() << "there is no /dev/shm";
    output.write(text);
    EXPECT_EQ(output.finish().reason(), "");
    EXPECT_EQ(content_of(path), text);
  }
  ::unlink(path.c_str());
}

TEST(AtomicFile, is_placed_over_nothing_when_asked) {
  const TempTree tree;
  tree.make({"taken", "outside", "left behind -> outside"});
  AtomicFile file;
  ASSERT_EQ(file.open(tree / "left behind"), 0);
  file.write("new");
  EXPECT_EQ(file.sync(), 0);
  EXPECT_EQ(file.place_exclusively(tree / "taken"), EEXIST);
  EXPECT_EQ(file.place_exclusively(tree / "free"), 0);
  EXPECT_EQ(content_of(tree / "free") + content_of(tree / "taken") + content_of(tree / "outside"), "newtakenoutside");
  EXPECT_THAT(tree.names(), ElementsAre("free", "outside", "taken"));
}

TEST(FileVersion, is_read_from_the_start_of_the_file) {
  const TempTree tree;
  const std::string long_tail(200'000, ' ');
  const struct {
    std::string content;
    std::optional<std::string> version;
  } cases[] = {
      {"<files appversion=\"3.1\"/>", "3.1"},
      {"<?xml version=\"1.0\"?><plist version=\"1.0\" appversion=\"\"><array/></plist>", ""},
      {"<files appversion='4'>" + long_tail + "</files>", "4"},
      {"<files appversion='4'>" + long_tail, "4"},
      {"<files/>", std::nullopt},
      {"<files appversion='4'>", std::nullopt},
      {long_tail + "<files appversion='4'/>", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& each : cases) {
    std::ofstream(tree / "file.xml") << each.content;
    EXPECT_EQ(appVersionInPlist(tree / "file.xml"), each.version) << each.content.substr(0, 60);
  }
  EXPECT_EQ(appVersionInPlist(tree / "missing.xml"), std::nullopt);
}

TEST(Trash, keeps_every_file_under_a_name_of_its_own) {
  const TempTree tree;
  ::setenv("XDG_DATA_HOME", (tree / "data").c_str(), 1);
  for (int i = 0; i < 2; ++i) {
    tree.make({"a folder/50 %.xml"});
    EXPECT_EQ(move_to_trash(tree / "a folder/50 %.xml").error(), 0);
  }
  EXPECT_EQ(move_to_trash(tree / "a folder/50 %.xml").error(), ENOENT);
  EXPECT_THAT(tree.names(), ::testing::IsSupersetOf({"data/Trash/files/50 %.xml", "data/Trash/files/50 %.xml.2",
                                                     "data/Trash/info/50 %.xml.2.trashinfo"}));
  EXPECT_THAT(content_of(tree / "data/Trash/info/50 %.xml.trashinfo"),
              MatchesRegex("\\[Trash Info\\]\nPath=" + tree.path() +
                           "/a%20folder/50%20%25.xml\nDeletionDate=....-..-..T..:..:..\n"));
  ::unsetenv("XDG_DATA_HOME");
}

TEST(Trash, of_another_disk_is_at_its_top) {
  struct stat here {};
  struct stat there {};
  const TempTree tree;
  if (::stat("/dev/shm", &there) != 0 || ::stat(tree.path().c_str(), &here) != 0 || here.st_dev == there.st_dev) {
    GTEST_SKIP() << "there is no second disk";
  }
  ::setenv("XDG_DATA_HOME", tree.path().c_str(), 1);
  const std::string name = "brindle-test-" + std::to_string(::getpid());
  std::ofstream("/dev/shm/" + name) << "x";
  EXPECT_EQ(move_to_trash("/dev/shm/" + name).error(), 0);
  const std::string trash = "/dev/shm/.Trash-" + std::to_string(::getuid());
  EXPECT_THAT(content_of(trash + "/info/" + name + ".trashinfo"), HasSubstr("\nPath=" + name + "\n"));
  EXPECT_EQ(::unlink((trash + "/files/" + name).c_str()), 0);
  EXPECT_EQ(::unlink((trash + "/info/" + name + ".trashinfo").c_str()), 0);
  ::unsetenv("XDG_DATA_HOME");
}

}  // namespace
}  // namespace brindle::test
