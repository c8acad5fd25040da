#include "settings/setting_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

#include "plist/iso_date.h"
#include "settings/field_filter.h"
#include "support/case_file.h"
#include "texts/string_table.h"

namespace brindle::test {
namespace {

TEST(SettingText, FollowsItsTable) {
  for (const CaseColumns& c : read_cases("setting_text.tsv", 3)) {
    RenameSettings settings = all_changed();
    const std::optional<std::string> fault = set_from_text(settings, c[0], c[1]);
    if (c[2].starts_with('=')) {
      ASSERT_EQ(fault, std::nullopt) << c[0] << " " << c[1];
      EXPECT_EQ(text_of_setting(settings, *find_setting(c[0])), c[2].substr(1)) << c[0] << " " << c[1];
    } else {
      EXPECT_THAT(fault.value_or("accepted"), testing::HasSubstr(c[2].substr(1))) << c[0] << " " << c[1];
      EXPECT_THAT(differing_keys(settings, all_changed()), testing::IsEmpty());
    }
  }
}

TEST(SettingText, ReadsBackWhatItWrites) {
  const RenameSettings settings = all_changed();
  RenameSettings read;
  for (const SettingRow& row : settings_table()) {
    ASSERT_EQ(set_from_text(read, row.key, text_of_setting(settings, row)), std::nullopt) << row.key;
  }
  // A bare token knows less than the field it came from.
  EXPECT_THAT(differing_keys(settings, read), testing::ElementsAre("photoMetaDataList", "id3RenamingTagsList"));
}

TEST(SettingText, DefaultsCanBeSet) {
  RenameSettings settings = all_changed();
  for (const SettingDescription& row : describe_settings()) {
    ASSERT_EQ(set_from_text(settings, row.key, row.default_text), std::nullopt) << row.key;
  }
  EXPECT_THAT(differing_keys(settings, {}), testing::ElementsAre("dateTimeCustomDate", "renameFile"));
}

TEST(SettingText, ReadsATimeWithoutZoneInTheZoneOfThisComputer) {
  std::tm local{};
  local.tm_year = 2026 - 1900;
  local.tm_mon = 6;
  local.tm_mday = 1;
  local.tm_hour = 12;
  local.tm_isdst = -1;
  EXPECT_EQ(date_of_iso_text("2026-07-01T12:00"), Date(std::chrono::seconds(std::mktime(&local))));
}

struct AssignmentCase {
  std::vector<std::string_view> assignments;
  const char* effect;  // beyond the defaults, "|" between; or "!" and a part of what is said
};

TEST(SettingText, BringsInLineWhatBelongsTogether) {
  const AssignmentCase cases[] = {
      {{}, ""},
      {{"isFolders=1"}, "isFolders=1|isFiles=0"},
      {{"isFiles=0"}, "isFolders=1|isFiles=0"},
      {{"isFolders=1", "isFiles=1"}, "isFolders=1|isFiles=1"},
      {{"generalFilenameMask=a=b"}, "generalFilenameMask=a=b"},
      {{"selectedTab=1", "selectedTab=2"}, "selectedTab=2"},
      {{"photoMetaDataList=<a>;<b>"}, "photoMetaDataList=<a>;<b>|photoRenamingMask=<a><b>"},
      {{"photoMetaDataList=<a>;<b>", "isPhotoRenamingSeperator=1", "photoRenamingSeperator=-"},
       "photoMetaDataList=<a>;<b>|isPhotoRenamingSeperator=1|photoRenamingSeperator=-|photoRenamingMask=<a>-<b>"},
      {{"id3RenamingMask=m", "id3RenamingTagsList=<Artist>"}, "id3RenamingMask=m|id3RenamingTagsList=<Artist>"},
      {{"id3RenamingMask=<Artist> x"}, "id3RenamingMask=<Artist> x"},
      {{"photoRenamingMask=m", "photoMetaDataList=<a>"}, "photoRenamingMask=m|photoMetaDataList=<a>"},
      {{"id3RenamingTagsList=<Year>"}, "id3RenamingTagsList=<Year>|id3RenamingMask=<Year>"},
      {{"selectedTab=1", "selectedTab"}, "!\"selectedTab\" is not of the form KEY=VALUE"},
      {{"selectedTab=1", "=1"}, "!unknown setting \"\""},
      {{"selectedTab=1", "isFiles=maybe"}, "!is a flag"},
  };
  for (const AssignmentCase& c : cases) {
    RenameSettings settings;
    const std::optional<std::string> fault = apply_assignments(settings, c.assignments);
    const std::string effect = c.effect;
    const bool refused = effect.starts_with('!');
    ASSERT_EQ(fault.has_value(), refused) << fault.value_or("");
    EXPECT_THAT(fault.value_or(""), testing::HasSubstr(refused ? effect.substr(1) : ""));
    const RenameSettings expected = with({}, refused ? "" : effect);
    EXPECT_THAT(differing_keys(settings, expected), testing::IsEmpty()) << effect;
  }
}

TEST(StringTable, FillsFormats) {
  EXPECT_EQ(localized("No such key"), "No such key");
  EXPECT_EQ(localized("YES"), "Yes");
  EXPECT_EQ(localized_format("%@ x %@", "4000", std::string("3000")), "4000 x 3000");
  EXPECT_EQ(localized_format("%d of %d %@ 100%%", 1, std::size_t{2}, "%@"), "1 of 2 %@ 100%");
  EXPECT_EQ(localized_format("%2$@ %1$d", 1, "b"), "b 1");
  EXPECT_EQ(localized_format("%@ %@ %3$d %0$d %x %", "a"), "a %@ %3$d %0$d %x %");
  EXPECT_EQ(localized_format("100%"), "100%");
  EXPECT_THAT(localized_format("UNABLETOGENERATENEWFILENAMEERROR", "why"), testing::HasSubstr("why"));
  EXPECT_THAT(localized_format("TIMETAKEN", localized("PREVIEWTIME"), 3), testing::AllOf(testing::HasSubstr("3")));
}

TEST(TypedText, IsLetIntoShortFieldsOrNot) {
  const struct {
    std::u16string text;
    bool accepted, beep;
  } cases[] = {{u"", true, true},     {u"0", true, false},  {u"300", true, false},   {u"301", false, true},
               {u"007", false, true}, {u"+7", false, true}, {u"-7", false, true},    {u"7 ", false, true},
               {u" 7", false, true},  {u"x", false, true},  {u"1000", false, false}, {u"\u0663", false, true}};
  CustomTextFieldFormatter filter;
  for (const auto& each : cases) {
    const auto answer = filter.check(each.text);
    EXPECT_EQ(answer.accepted, each.accepted);
    EXPECT_EQ(answer.beep, each.beep);
  }
}

TEST(TypedText, LeavesANumberInNumericFields) {
  EXPECT_EQ(numeric_field_text(u" 012x", 5), u"12");
  EXPECT_EQ(numeric_field_text(u"-3", 5), u"-3");
  for (const char16_t* text : {u"", u"0", u"x1"}) EXPECT_EQ(numeric_field_text(text, 5), u"5");
}

}  // namespace
}  // namespace brindle::test
