#include "settings/settings_record.h"

#include <gmock/gmock.h>

#include <limits>

#include "platform/app_info.h"
#include "settings/settings_store.h"
#include "settings/stored_value.h"
#include "support/case_file.h"

namespace brindle {
namespace {

SettingsRecord record_of(std::initializer_list<PropertyEntry> entries) {
  SettingsRecord record;
  for (const PropertyEntry& entry : entries) record.append(entry.key, entry.value);
  return record;
}

RenameSettings after(const SettingsRecord& record, RenameSettings settings = {}) {
  setSettings(settings, record);
  return settings;
}

TEST(SettingsRecord, GivesBackEverythingButTheDate) {
  RenameSettings settings = all_changed();
  resetPhotoMask(settings);
  resetID3Mask(settings);
  const SettingsRecord record = getCurrentSettings(settings);
  EXPECT_EQ(record.size(), setting_count);
  EXPECT_THAT(differing_keys(after(record), settings), testing::ElementsAre("dateTimeCustomDate"));
}

TEST(SettingsRecord, StoresFlagsAndNumbersAsText) {
  const SettingsRecord record = getCurrentSettings(with({}, "isFolders=1|selectedTab=-12|alphaNumericSeperator=ö"));
  EXPECT_EQ(record.begin()->key, u"appVersion");
  EXPECT_EQ(*record.find(u"appVersion"), PropertyValue(u"4.0.0"));
  EXPECT_EQ(*record.find(u"isFiles"), PropertyValue(u"1"));
  EXPECT_EQ(*record.find(u"isAlphaNumericPrefix"), PropertyValue(u"0"));
  EXPECT_EQ(*record.find(u"selectedTab"), PropertyValue(u"-12"));
  EXPECT_EQ(*record.find(u"alphaNumericSeperator"), PropertyValue(u"ö"));
  EXPECT_NE(record.find(u"dateTimeCustomDate")->get_if<Date>(), nullptr);
}

TEST(SettingsRecord, EndsBeforeTheFirstAbsentText) {
  const auto last_key = [](const char* changes) {
    const SettingsRecord record = getCurrentSettings(with({}, changes));
    return std::pair(record.size(), std::prev(record.end())->key);
  };
  EXPECT_EQ(last_key(""), std::pair(setting_count - 1, key_text(settings_table()[setting_count - 2].key)));
  EXPECT_EQ(last_key("~alphaNumericSeperator|~photoRenamingMask"),
            std::pair(std::size_t{12}, std::u16string(u"isAlphaNumericSeperator")));
  EXPECT_EQ(last_key("renameFile=").first, setting_count);
}

// What restoring each kind of value changes, told by the keys and their new text.
TEST(SettingsRecord, TakesWhatFitsAndPassesOverTheRest) {
  using Array = PropertyValue::Array;
  const Date date(std::chrono::hours(1));
  struct Case {
    const char16_t* key;
    PropertyValue value;
    const char* effect;
  };
  const Case cases[] = {
      {u"isFolders", u"1", "isFolders=1"},
      {u"isFolders", u"12", "isFolders=1"},
      {u"isFolders", true, "isFolders=1"},
      {u"isFiles", u"yes", "isFiles=0"},
      {u"selectedTab", u" 12 monkeys", "selectedTab=12"},
      {u"selectedTab", std::int64_t{1} << 40, "selectedTab=2147483647"},
      {u"selectedTab", 3.9, "selectedTab=3"},
      {u"pathComponentsLevelNo", u"none", "pathComponentsLevelNo=0"},
      {u"generalFilenameMask", u"00", "generalFilenameMask=00"},
      {u"photoExtensions", Array{u".png"}, "photoExtensions=.PNG"},
      {u"selectedTab", Array{}, ""},
      {u"generalFilenameMask", 12, "generalFilenameMask=12"},
      {u"alphaNumericNumericStartWith", -5.0, "alphaNumericNumericStartWith=-5"},
      {u"alphaNumericNumericStartWith", 2.5, "alphaNumericNumericStartWith=2.5"},
      {u"alphaNumericNumericStartWith", std::int64_t{1} << 40, "alphaNumericNumericStartWith=1099511627776"},
      {u"generalFilenameMask", true, "generalFilenameMask=1"},
      {u"generalFilenameMask", std::numeric_limits<double>::infinity(), ""},
      {u"generalFilenameMask", date, ""},
      {u"isFolders", date, ""},
      {u"dateTimeCustomDate", date, ""},
      {u"photoExtensions", u".png", ""},
      {u"photoExtensions", Array{u".png", date}, ""},
      {u"appVersion", u"1", ""},
      {u"noSuchKey", u"1", ""},
  };
  for (const Case& c : cases) {
    RenameSettings expected = with({}, c.effect);
    if (std::string_view(c.effect).starts_with("photoExtensions")) expected.photoExtensions = {u".png"};
    EXPECT_THAT(differing_keys(after(record_of({{c.key, c.value}})), expected), testing::IsEmpty()) << c.effect;
  }
}

TEST(SettingsRecord, LeavesKeysAloneThatItLacks) {
  const RenameSettings before = with({}, "alphaNumericSeperator=-|isFolders=1|isFiles=0|generalFilenameMask=x");
  const RenameSettings now = after(record_of({{u"generalFilenameMask", u"y"}}), before);
  EXPECT_THAT(differing_keys(before, now), testing::ElementsAre("generalFilenameMask"));
}

TEST(SettingsRecord, MakesTheMasksAnew) {
  PropertyDictionary field;
  field.append(u"tagCode", u"<Artist>");
  const PropertyValue::Array fields{field, u"<Year>"};
  const RenameSettings now = after(record_of({{u"id3RenamingTagsList", fields},
                                              {u"id3RenamingMask", u"stale"},
                                              {u"photoRenamingMask", u"stale"},
                                              {u"id3RenamingSeperator", u"_"},
                                              {u"isID3RenamingSeperator", u"1"}}));
  EXPECT_EQ(now.id3RenamingMask, u"<Artist>_<Year>");
  EXPECT_EQ(now.photoRenamingMask, u"");
}

TEST(PropertyDictionary, KeepsOrderAndReplaces) {
  PropertyDictionary dictionary;
  dictionary.set(u"b", 1);
  dictionary.set(u"a", 2);
  dictionary.set(u"b", PropertyValue::Array{dictionary});
  ASSERT_EQ(dictionary.size(), 2U);
  EXPECT_EQ(dictionary.begin()->key, u"b");
  const PropertyDictionary copy = dictionary;
  EXPECT_EQ(copy, dictionary);
  dictionary.set(u"a", 2.0);
  EXPECT_FALSE(copy == dictionary);
  EXPECT_EQ(dictionary.find(u"c"), nullptr);
}

class StoreTest : public testing::Test {
 protected:
  StoreTest() {
    store.add_observer([this](const SettingsChange& change) { told.push_back(change); });
  }
  void commit(const char* changes) {
    store.commit([&](RenameSettings& settings) { settings = with(settings, changes); });
  }

  SettingsStore store;
  std::vector<SettingsChange> told;
};

TEST_F(StoreTest, TellsOnceACommit) {
  commit("isFiles=0|isFolders=1|generalFilenameMask=x");
  ASSERT_EQ(told.size(), 1U);
  EXPECT_TRUE(told[0].contains("isFiles") && told[0].contains("isFolders") && told[0].contains("generalFilenameMask"));
  EXPECT_EQ(told[0].keys.count(), 3U);
  EXPECT_TRUE(told[0].isSettingsChanged && told[0].has_values);
  commit("isFiles=0|isFolders=1");
  EXPECT_EQ(told.size(), 1U) << "nothing differs";
}

TEST_F(StoreTest, SignalsOnlyTheKeysThatCount) {
  commit("selectedTab=4|isReplaceRemoveReplace=0|prefixSuffixPrefix=x");
  commit("replaceRemoveThis=x");
  commit("~replaceRemoveThis");
  commit("replaceRemoveThis=y");
  commit("~replaceRemoveThis|replaceRemoveWith=z");
  std::vector<std::pair<bool, bool>> signals;
  for (const SettingsChange& change : told) signals.emplace_back(change.isSettingsChanged, change.has_values);
  EXPECT_THAT(signals, testing::ElementsAre(std::pair(false, false), std::pair(true, true), std::pair(true, false),
                                            std::pair(true, false), std::pair(true, true)));
}

TEST_F(StoreTest, TellsWhetherAChangeIsQuietAndSignalsWithoutAny) {
  store.signal();
  {
    const SettingsStore::Quiet quiet(store);
    commit("isFiles=0");
    const SettingsStore::Quiet within(store);
  }
  commit("isFiles=1");
  ASSERT_EQ(told.size(), 3U);
  EXPECT_TRUE(told[0].isSettingsChanged && told[0].keys.none());
  EXPECT_EQ(std::vector({told[0].is_quiet, told[1].is_quiet, told[2].is_quiet}), std::vector({false, true, false}));
}

TEST_F(StoreTest, ObserversMayCommitAndLeave) {
  std::vector<std::string> order;
  std::uint32_t second = 0;
  store.add_observer([&](const SettingsChange& change) {
    if (change.contains("isFiles")) {
      order.emplace_back("first");
      commit("isFolders=1");
      order.emplace_back("first ends");
      store.remove_observer(second);
    }
  });
  second = store.add_observer([&](const SettingsChange&) { order.emplace_back("second"); });
  store.add_observer([&](const SettingsChange& change) {
    order.emplace_back(change.contains("isFolders") ? "third: folders" : "third: files");
  });
  commit("isFiles=0");
  EXPECT_THAT(order, testing::ElementsAre("first", "first ends", "third: files", "third: folders"));
  EXPECT_TRUE(store.settings().isFolders);
}

}  // namespace
}  // namespace brindle
