#include "platform/data_folders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>

#include "support/temp_tree.h"

namespace brindle::test {
namespace {

void set(const char* name, const std::optional<std::string>& value) {
  if (value)
    ::setenv(name, value->c_str(), 1);
  else
    ::unsetenv(name);
}

/// Puts the two variables back when the test is over.
class Environment {
 public:
  Environment(const std::optional<std::string>& data, const std::optional<std::string>& home) {
    set("XDG_DATA_HOME", data);
    set("HOME", home);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment() {
    set("XDG_DATA_HOME", data_);
    set("HOME", home_);
  }

 private:
  static std::optional<std::string> get(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
  }
  std::optional<std::string> data_ = get("XDG_DATA_HOME");
  std::optional<std::string> home_ = get("HOME");
};

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
    const Environment environment(each.data, each.home);
    EXPECT_EQ(getAppPath(), each.expected);
    EXPECT_EQ(default_log_folder(), each.expected.empty() ? "" : each.expected + "/Logs");
  }
}

TEST(DataFolders, are_made_with_all_above_them) {
  const TempTree tree;
  const Environment environment(tree / "not/yet", std::nullopt);
  std::string error;
  EXPECT_TRUE(createApplicationUsersFolder("Logs", error));
  EXPECT_TRUE(createApplicationUsersFolder("Logs", error)) << error;
  EXPECT_TRUE(std::filesystem::is_directory(tree / "not/yet/Tessalon/Brindle4/Logs"));
  tree.make({"not/yet/Tessalon/Brindle4/Rules"});
  EXPECT_FALSE(createApplicationUsersFolder("Rules", error));
  EXPECT_NE(error.find("Brindle4/Rules"), std::string::npos);
}

TEST(DataFolders, follow_the_preferences_for_logs) {
  const TempTree tree;
  const Environment environment(tree.path(), std::nullopt);
  tree.make({"Tessalon/Brindle4/"});
  const std::string usual = tree / "Tessalon/Brindle4/Logs";
  const auto list = [](const std::string& entries) {
    return "<?xml version=\"1.0\"?><!DOCTYPE plist PUBLIC \"x\" \"y\"><plist version=\"1.0\">\n<dict>" + entries +
           "</dict></plist>";
  };
  const std::string key = "<key>defaultLogFolderPath</key>";
  const struct {
    std::string content;
    std::string expected;
  } cases[] = {
      {list(key + "\n  <string>/my logs/&amp;</string>"), "/my logs/&"},
      {list("<key>isShowHubIcon</key><true/>" + key + "<string>/x/</string>"), "/x"},
      {list("<key>other</key><string>defaultLogFolderPath</string><key>k</key><string>/x</string>"), usual},
      {list(key + "<string>relative</string>"), usual},
      {list(key + "<true/>"), usual},
      {list(key), usual},
      {"garbage", usual},
      {"", usual},
  };
  for (const auto& each : cases) {
    std::ofstream(tree / "Tessalon/Brindle4/preferences.plist") << each.content;
    EXPECT_EQ(default_log_folder(), each.expected) << each.content;
  }
}

}  // namespace
}  // namespace brindle::test
