#include "settings/settings_table.h"

#include <gmock/gmock.h>

#include "methods/method_table.h"
#include "platform/app_info.h"
#include "platform/file_name.h"
#include "support/case_file.h"

namespace brindle {
namespace {

std::string kinds_of_rules(const SettingRow& row) {
  std::string names;
  for (const MethodRow* method : method_table()) {
    for (const RuleKind& kind : method->kinds) {
      if ((row.rules & rule_bit(kind.variant)) == 0) continue;
      names.append(names.empty() ? "" : ",").append(kind.type.begin(), kind.type.end());
    }
  }
  return names;
}

// What files hold already stays as it is, and in this order; keys that came later may stand between.
TEST(SettingsTable, KeepsTheKeysThatFilesHold) {
  const std::vector<SettingDescription> described = describe_settings();
  ASSERT_EQ(described.size(), setting_count);
  std::size_t i = 0;
  for (const CaseColumns& expected : read_cases("settings_keys.tsv", 5)) {
    while (i < setting_count && settings_table()[i].key != expected[0]) ++i;
    ASSERT_LT(i, setting_count) << expected[0] << " is not there, or not in its place";
    const SettingRow& row = settings_table()[i];
    EXPECT_EQ(described[i].key, row.key);
    EXPECT_EQ(described[i].type, expected[1]) << row.key;
    EXPECT_EQ(described[i].default_text, i == 0 ? std::string(appVersion()) : expected[2]) << row.key;
    EXPECT_EQ(row.change == SettingChange::watched, expected[3] == "1") << row.key;
    EXPECT_EQ(kinds_of_rules(row), expected[4]) << row.key;
  }
}

TEST(SettingsTable, FindsEveryKeyAndNothingElse) {
  for (const SettingRow& row : settings_table()) {
    EXPECT_EQ(find_setting(row.key), &row);
    EXPECT_FALSE(row.meaning.empty()) << row.key;
    EXPECT_EQ(find_setting(std::u16string(row.key.begin(), row.key.end())), &row);
    EXPECT_EQ(find_setting(std::string(row.key) + "x"), nullptr);
  }
  EXPECT_EQ(find_setting(std::string_view()), nullptr);
  EXPECT_EQ(find_setting("isfiles"), nullptr);
  // The last letter has the same low byte as "s".
  EXPECT_EQ(find_setting(u"isFileų"), nullptr);
}

TEST(SettingsTable, ComparesMemberByMember) {
  const RenameSettings defaults;
  SettingSet all_members;
  all_members.set().reset(0);
  EXPECT_EQ(compare_settings(defaults, all_changed()), all_members);
  EXPECT_THAT(differing_keys(defaults, with(defaults, "isFiles=0|~generalFilenameMask")),
              testing::ElementsAre("isFiles", "generalFilenameMask"));
}

TEST(RenameSettings, LoadsTheEmptyProfile) {
  RenameSettings settings = all_changed();
  const Date now(std::chrono::milliseconds(1'700'000'000'123));
  loadEmptyProfile(settings, now);
  EXPECT_EQ(settings.dateTimeCustomDate, now);
  EXPECT_THAT(differing_keys(settings, RenameSettings{}), testing::ElementsAre("dateTimeCustomDate"));
  EXPECT_EQ(settings.renameFile, std::nullopt);
}

struct MaskCase {
  const char* tokens;
  const char* photo;  // with the separator "-" switched on
  const char* audio;
};

TEST(RenameSettings, MakesMasksFromLists) {
  constexpr MaskCase cases[] = {
      {"", "", ""},
      {"<Artist>;<Title>", "<Artist>-<Title>", "<Artist>-<Title>"},
      {"<Artist>;<x>;<Title>;<Year>", "<Artist>-<x>-<Title>-<Year>", "<Artist>-<x><Title>-<Year>"},
      {"<x>;<Artist>", "<x>-<Artist>", "<x><Artist>"},
  };
  for (const MaskCase& mask : cases) {
    const std::string tokens = mask.tokens;
    std::string changes = "photoRenamingSeperator=-|id3RenamingSeperator=-|photoMetaDataList=";
    changes.append(tokens).append("|id3RenamingTagsList=").append(tokens);
    RenameSettings settings = with({}, changes);
    EXPECT_EQ(resetPhotoMask(settings), !tokens.empty());
    std::string joined = tokens;
    std::erase(joined, ';');
    EXPECT_EQ(settings.photoRenamingMask, decode_file_name(joined));
    settings = with(settings, "isPhotoRenamingSeperator=1|isID3RenamingSeperator=1");
    resetPhotoMask(settings);
    EXPECT_EQ(resetID3Mask(settings), !tokens.empty());
    EXPECT_EQ(settings.photoRenamingMask, decode_file_name(mask.photo));
    EXPECT_EQ(settings.id3RenamingMask, decode_file_name(mask.audio));
  }
}

TEST(IntegerValue, FollowsThePlatform) {
  const std::pair<std::u16string_view, std::int32_t> cases[] = {
      {u"", 0},
      {u"12", 12},
      {u" \t\n-7", -7},
      {u"+3x", 3},
      {u"x3", 0},
      {u"- 3", 0},
      {u"--3", 0},
      {u"007", 7},
      {u"1.9", 1},
      {u"2147483648", 2147483647},
      {u"-99999999999999999999999", -2147483647 - 1},
      {u"-2147483648", -2147483647 - 1},
      {u"99999999999999999999999", 2147483647},
      {u"٣", 0},
      {u"   ", 0},
      {u"-", 0},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(integer_value(text), value);
}

TEST(AppInfo, AcceptsFilesOfEveryVersion) {
  for (const char* version : {"", "1.0", "99", ".", "4.0.0"}) EXPECT_TRUE(isFileVersionMatch(version));
  EXPECT_EQ(getAppTitle(" - x"), "Brindle - x");
}

}  // namespace
}  // namespace brindle
