// Where the program keeps what is the user's, and that none of it is renamed.

#include "platform/data_folders.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/own_folders.h"
#include "support/environment.h"
#include "support/temp_tree.h"

namespace brindle::test {
namespace {

Environment folders(const std::optional<std::string>& data, const std::optional<std::string>& home) {
  return Environment({{"XDG_DATA_HOME", data}, {"HOME", home}});
}

TEST(DataFolders, lie_where_the_environment_says) {
  const std::optional<std::string> unset;
  const struct {
    std::optional<std::string> data;
    std::optional<std::string> home;
    std::string expected;
  } cases[] = {
      {"/d", "/h", "/d/Tessalon/Brindle4"},
      {"/d//", unset, "/d/Tessalon/Brindle4"},
      {unset, "/h", "/h/.local/share/Tessalon/Brindle4"},
      {"", "/h/", "/h//.local/share/Tessalon/Brindle4"},
      {"relative", "/h", "/h/.local/share/Tessalon/Brindle4"},
      {unset, unset, ""},
      {"relative", "relative", ""},
  };
  for (const auto& each : cases) {
    const Environment environment = folders(each.data, each.home);
    EXPECT_EQ(getAppPath(), each.expected);
  }
}

TEST(DataFolders, are_made_with_all_above_them) {
  const TempTree tree;
  const Environment environment = folders(tree / "not/yet", std::nullopt);
  EXPECT_EQ(createApplicationUsersFolder("Logs").reason(), "");
  EXPECT_EQ(createApplicationUsersFolder("Logs").reason(), "");
  EXPECT_TRUE(std::filesystem::is_directory(tree / "not/yet/Tessalon/Brindle4/Logs"));
  // Nobody else's, also where they were once made otherwise.
  const auto mode = [&](std::string_view path) { return std::filesystem::status(tree / path).permissions(); };
  constexpr auto ours_alone = std::filesystem::perms::owner_all;
  EXPECT_EQ(mode("not/yet/Tessalon/Brindle4"), ours_alone);
  ::chmod((tree / "not/yet/Tessalon/Brindle4/Logs").c_str(), 0755);
  EXPECT_EQ(createApplicationUsersFolder("Logs").reason(), "");
  EXPECT_EQ(mode("not/yet/Tessalon/Brindle4/Logs"), ours_alone);
  tree.make({"not/yet/Tessalon/Brindle4/Rules"});
  EXPECT_NE(createApplicationUsersFolder("Rules").reason().find("Brindle4/Rules"), std::string::npos);
}

TEST(OwnFolders, HangOnAllThatTheirPathsLeadThrough) {
  const TempTree tree;
  tree.make({"home/.config/Tessalon/x", "home/.local/other/", "disk/share/Tessalon/Brindle4/Logs/", "disk/else/",
             "disk/loop -> loop", "home/.local/share -> ../../hop", "hop -> disk/share/.", "elsewhere/logs/kept/"});
  const Environment folders(
      {{"XDG_DATA_HOME", tree / "home/.local/share"}, {"XDG_CONFIG_HOME", tree / "home/../home//.config"}});
  const OwnFolders own = OwnFolders::with_logs_in(tree / "elsewhere/logs");
  const auto hangs_on = [&](const std::string& path) {
    const std::size_t slash = (tree / path).rfind('/');
    const FolderHandle folder = FolderHandle::open((tree / path).substr(0, slash));
    const std::string name = (tree / path).substr(slash + 1);
    const bool hangs = own.hang_on(folder, name.c_str());
    EXPECT_TRUE(!hangs || own.may_hang_on(name, 0)) << path;
    return hangs;
  };
  for (const char* path :
       {"home", "home/.config", "home/.config/Tessalon", "home/.local", "home/.local/share", "hop", "disk",
        "disk/share", "disk/share/Tessalon", "disk/share/Tessalon/Brindle4", "elsewhere", "elsewhere/logs"}) {
    EXPECT_TRUE(hangs_on(path)) << path;
  }
  for (const char* path :
       {"home/.local/other", "disk/else", "disk/loop", "home/.config/Tessalon/x", "gone", "elsewhere/logs/kept"}) {
    EXPECT_FALSE(hangs_on(path)) << path;
  }
  EXPECT_FALSE(own.hang_on(FolderHandle(), "home"));
  EXPECT_FALSE(OwnFolders().may_hang_on("home", 0));
}

TEST(OwnFolders, AreNotLookedForBeyondLinksThatGoRound) {
  const TempTree tree;
  tree.make({"a -> b", "b -> a", "empty/"});
  const Environment folders({{"XDG_DATA_HOME", tree / "empty"}, {"XDG_CONFIG_HOME", tree / "empty"}});
  const OwnFolders own = OwnFolders::with_logs_in(tree / "a/logs");
  const FolderHandle folder = FolderHandle::open(tree.path());
  EXPECT_TRUE(own.hang_on(folder, "a") && own.hang_on(folder, "b") && own.hang_on(folder, "empty"));
}

}  // namespace
}  // namespace brindle::test
