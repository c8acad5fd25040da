// What is kept between runs: preferences and user defaults.

#include "settings/preferences.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <fstream>

#include "platform/data_folders.h"
#include "plist/property_list.h"
#include "settings/user_defaults.h"
#include "support/environment.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::Environment;
using test::TempTree;

std::string list(const std::string& entries) {
  return "<?xml version=\"1.0\"?><!DOCTYPE plist PUBLIC \"x\" \"y\"><plist version=\"1.0\">\n<dict>" + entries +
         "</dict></plist>";
}

class SavedPreferences : public testing::Test {
 protected:
  void write(const std::string& content) {
    ASSERT_EQ(createApplicationUsersFolder("").reason(), "");
    std::ofstream(preferences_path()) << content;
  }
  TempTree tree_;
  Environment environment_{{{"XDG_DATA_HOME", tree_.path()}, {"XDG_CONFIG_HOME", tree_ / "config"}}};
};

TEST_F(SavedPreferences, ComeBackAsTheyWereSaved) {
  Preferences preferences = default_preferences();
  EXPECT_EQ(preferences.defaultRulesFolderPath, getAppPath() + "/Rules");
  EXPECT_FALSE(loadPreferences(preferences));
  preferences.defaultProfileFolderPath = "/not \xFF text/<&>";
  preferences.automaticSaveCurrProfile = true;
  preferences.isShowHubIcon = false;
  EXPECT_EQ(savePreferences(preferences).reason(), "");
  Preferences read = default_preferences();
  EXPECT_TRUE(loadPreferences(read));
  EXPECT_EQ(read.defaultProfileFolderPath, preferences.defaultProfileFolderPath);
  EXPECT_EQ(default_profile_folder(), preferences.defaultProfileFolderPath);
  EXPECT_EQ(default_rules_folder(), getAppPath() + "/Rules");
  EXPECT_TRUE(read.automaticSaveCurrProfile);
  EXPECT_FALSE(read.isShowHubIcon);
  const Result<PropertyList> file = read_property_list_file(preferences_path());
  ASSERT_EQ(file.reason(), "");
  const auto* values = file->value.get_if<PropertyDictionary>();
  ASSERT_NE(values, nullptr);
  EXPECT_EQ(*values->find(u"automaticSaveCurrProfile"), PropertyValue(u"1"));
  EXPECT_EQ(*values->find(u"isShowHubIcon"), PropertyValue(false));
}

TEST_F(SavedPreferences, TakeFlagsInEveryForm) {
  const struct {
    std::string value;
    bool expected;
  } cases[] = {{"<true/>", true},
               {"<false/>", false},
               {"<integer>1</integer>", true},
               {"<string>0</string>", false},
               {"<string>1</string>", true},
               {"<string> YES</string>", true},
               {"<string>no</string>", false},
               {"<string></string>", false},
               {"<data></data>", true}};
  for (const auto& each : cases) {
    write(list("<key>isShowHubIcon</key>" + each.value));
    Preferences preferences = default_preferences();
    EXPECT_TRUE(loadPreferences(preferences));
    EXPECT_EQ(preferences.isShowHubIcon, each.expected) << each.value;
    EXPECT_EQ(preferences.defaultLogFolderPath, getAppPath() + "/Logs");
  }
}

TEST_F(SavedPreferences, NameTheFolderOfLogs) {
  const std::string usual = getAppPath() + "/Logs";
  const std::string key = "<key>defaultLogFolderPath</key>";
  const struct {
    std::string content, expected;
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
    write(each.content);
    EXPECT_EQ(default_log_folder(), each.expected) << each.content;
  }
  const Environment nowhere({{"XDG_DATA_HOME", std::nullopt}, {"HOME", std::nullopt}});
  EXPECT_EQ(default_log_folder(), "");
  EXPECT_NE(savePreferences({}).reason(), "");
}

class Defaults : public SavedPreferences {
 protected:
  std::string path_ = UserDefaults::default_path();
};

TEST_F(Defaults, RememberWhatWasSet) {
  EXPECT_EQ(path_, tree_ / "config/Tessalon/Brindle4.plist");
  UserDefaults defaults;
  EXPECT_EQ(defaults.find(user_default::settings), nullptr);
  defaults.set(user_default::last_profile, u"/a");
  defaults.set(user_default::live_preview, true);
  defaults.set(user_default::live_preview_files_limit, 12);
  EXPECT_TRUE(defaults.boolean(user_default::live_preview, false));
  EXPECT_EQ(defaults.flush().reason(), "");
  EXPECT_EQ(std::filesystem::status(tree_ / "config/Tessalon").permissions(), std::filesystem::perms::owner_all);
  UserDefaults again;
  EXPECT_EQ(again.text(user_default::last_profile, u"?"), u"/a");
  EXPECT_EQ(again.text(user_default::live_preview_files_limit, u"?"), u"12");
  EXPECT_EQ(again.text(user_default::live_preview, u"?"), u"?");
  EXPECT_FALSE(again.boolean(user_default::include_hidden, false));
  again.remove(user_default::last_profile);
  EXPECT_EQ(again.find(user_default::last_profile), nullptr);
  EXPECT_EQ(again.flush().reason(), "");
  EXPECT_EQ(UserDefaults().find(user_default::last_profile), nullptr);
}

TEST_F(Defaults, ProgramsThatFlushAtOnceKeepEachOthersKeys) {
  constexpr int programs = 4, rounds = 15;
  const auto key = [](int program, int round) { return std::to_string(program) + "-" + std::to_string(round); };
  for (int program = 0; program < programs; ++program) {
    if (::fork() != 0) continue;
    UserDefaults defaults;
    for (int round = 0; round < rounds; ++round) {
      defaults.set(key(program, round), round);
      if (!defaults.flush().ok()) ::_exit(1);
    }
    ::_exit(0);
  }
  for (int program = 0; program < programs; ++program) {
    int status = 1;
    ::wait(&status);
    EXPECT_EQ(status, 0);
  }
  UserDefaults defaults;
  for (int i = 0; i < programs * rounds; ++i) EXPECT_NE(defaults.find(key(i / rounds, i % rounds)), nullptr) << i;
}

TEST_F(Defaults, KeepAFileThatTheyCannotRead) {
  tree_.make({"config/Tessalon/Brindle4.plist"});
  UserDefaults defaults;
  EXPECT_EQ(defaults.find("k"), nullptr);
  defaults.set("k", u"v");
  EXPECT_EQ(defaults.flush().reason(), "");
  EXPECT_TRUE(std::filesystem::exists(path_ + ".damaged"));
  EXPECT_EQ(UserDefaults().text("k", u""), u"v");
  std::filesystem::remove_all(tree_ / "config");
  tree_.make({"config"});
  defaults.set("k", u"w");
  EXPECT_NE(defaults.flush().reason(), "");
  std::filesystem::remove(tree_ / "config");
  EXPECT_EQ(defaults.flush().reason(), "");
  EXPECT_EQ(UserDefaults().text("k", u""), u"w");
}

}  // namespace
}  // namespace brindle
