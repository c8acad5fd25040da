#include "platform/data_folders.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

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

}  // namespace
}  // namespace brindle::test
