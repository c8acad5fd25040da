#include "methods/rule.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "methods/method_table.h"
#include "settings/stored_value.h"
#include "support/case_file.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::string ascii(std::u16string_view text) {
  return {text.begin(), text.end()};
}

std::string name_of(const NewRule& result) {
  if (const auto* rule = std::get_if<Rule>(&result)) return ascii(rule->rule) + "/" + ascii(rule->type);
  const auto* refusal = std::get_if<Refusal>(&result);
  return refusal ? std::string(refusal->title) + " " + std::string(refusal->message) : "none";
}

bool has_text(std::string_view key) {
  return localized(key) != key;
}

TEST(Validation, FollowsItsTable) {
  for (const CaseColumns& c : read_cases("validation.tsv", 4)) {
    const RenameSettings before = with({}, c[1]);
    RenameSettings settings = before;
    const std::optional<Refusal> refusal = validate_and_normalise(settings);
    std::string told;
    if (refusal) {
      told = std::string(refusal->title).append(" ").append(refusal->message).append(" ").append(refusal->setting);
      EXPECT_TRUE(has_text(refusal->title) && has_text(refusal->message)) << told;
    }
    EXPECT_EQ(told, c[2]) << c[0];
    EXPECT_THAT(differing_keys(settings, with(before, c[3])), testing::IsEmpty()) << c[0];
    EXPECT_EQ(validate_and_normalise(settings), refusal) << c[0] << ": a second time";
  }
}

TEST(Rule, IsMadeFromTheSelectedTab) {
  for (const CaseColumns& c : read_cases("rules.tsv", 4)) {
    const RenameSettings before = with({}, c[1]);
    RenameSettings settings = before;
    const NewRule result = getRule(settings);
    EXPECT_EQ(name_of(result), c[2]) << c[0];
    EXPECT_THAT(differing_keys(settings, with(before, c[3])), testing::IsEmpty()) << c[0];
    if (const auto* rule = std::get_if<Rule>(&result)) {
      EXPECT_TRUE(rule->isActive);
      EXPECT_EQ(rule->settings.selectedTab, settings.selectedTab);
      EXPECT_EQ(rule_from_dictionary(rule_to_dictionary(*rule)), *rule) << c[0];
    }
  }
}

/// Settings with no default in them, of which a rule of the variant can be made.
RenameSettings changed_for(RuleVariant variant) {
  RenameSettings settings = all_changed();
  settings.selectedTab = tab_of(rule_names(variant).method);
  settings.isAlphaNumericNumeric = variant == RuleVariant::numeric;
  settings.isAlphaNumericAlphabetic = variant == RuleVariant::alphabetic;
  settings.alphaNumericIncrementBy = settings.alphaNumericDecrementBy = u"17";
  settings.isInsertDeleteInsert = variant == RuleVariant::insert;
  settings.isReplaceRemoveReplace = variant == RuleVariant::replace;
  settings.isReplaceRemoveRemoveCharacters = variant == RuleVariant::remove_characters;
  settings.isPrefixSuffixString = variant == RuleVariant::as_string;
  return settings;
}

Rule rule_of(RenameSettings settings) {
  return std::get<Rule>(getRule(settings));
}

std::vector<RuleVariant> all_variants() {
  std::vector<RuleVariant> variants;
  for (const MethodRow* method : method_table()) {
    for (const RuleKind& kind : method->kinds) variants.push_back(kind.variant);
  }
  return variants;
}

TEST(MethodTable, IsInTheOrderOfTheStoredNumbersWithEveryKindOfRuleOnce) {
  for (std::size_t i = 0; i < method_table().size(); ++i) {
    RenameSettings settings;
    settings.selectedTab = static_cast<std::int32_t>(i);
    EXPECT_EQ(selected_method(settings), method_table()[i]->method);
    EXPECT_TRUE(has_text(method_table()[i]->title));
  }
  std::vector<RuleVariant> variants = all_variants();
  std::ranges::sort(variants);
  EXPECT_EQ(std::ranges::adjacent_find(variants), variants.end());
  for (const SettingRow& row : settings_table()) {
    for (const RuleVariant variant : variants) {
      const bool is_carried = (row.rules & rule_bit(variant)) != 0;
      EXPECT_TRUE(!is_carried || rule_names(variant).method == row.method) << row.key;
    }
  }
}

TEST(Rule, CarriesTheKeysOfItsVariant) {
  for (const RuleVariant variant : all_variants()) {
    const RenameSettings settings = changed_for(variant);
    const Rule rule = rule_of(settings);
    EXPECT_EQ(variant_of(rule), variant);

    const PropertyDictionary dictionary = rule_to_dictionary(rule);
    RenameSettings loaded;
    setRule(loaded, rule);
    const SettingSet loaded_differently = compare_settings(loaded, settings);
    std::size_t carried = 0;
    for (const SettingRow& row : settings_table()) {
      const std::u16string key(row.key.begin(), row.key.end());
      const bool is_carried = (row.rules & rule_bit(variant)) != 0;
      EXPECT_EQ(dictionary.find(key) != nullptr, is_carried) << row.key;
      EXPECT_FALSE(is_carried && loaded_differently[setting_index(row)]) << row.key;
      carried += is_carried ? 1 : 0;
    }
    const std::size_t besides = variant == RuleVariant::numeric || variant == RuleVariant::alphabetic ? 4
                                : variant == RuleVariant::photo                                       ? 4
                                                                                                      : 3;
    EXPECT_EQ(dictionary.size(), carried + besides) << ascii(rule.type);
    EXPECT_EQ(rule_from_dictionary(dictionary), rule) << ascii(rule.type);
  }
}

TEST(Rule, SelectsItsTabAndChoices) {
  struct Case {
    RuleVariant variant;
    const char* settings;
  };
  constexpr Case cases[] = {
      {RuleVariant::numeric, "selectedTab=0|isAlphaNumericNumeric=1|isAlphaNumericAlphabetic=0"},
      {RuleVariant::alphabetic,
       "selectedTab=0|isAlphaNumericNumeric=0|isAlphaNumericAlphabetic=1|"
       "alphaNumericNumericAlphabeticIndex=1|alphaNumericIncrementDecrementIndex=1"},
      {RuleVariant::insert, "selectedTab=1|isInsertDeleteInsert=1|isInsertDeleteDelete=0|insertDeleteIndex=0"},
      {RuleVariant::delete_characters, "isInsertDeleteInsert=0|isInsertDeleteDelete=1|insertDeleteIndex=1"},
      {RuleVariant::replace, "isReplaceRemoveReplace=1|isReplaceRemoveRemove=0|isReplaceRemoveRemoveCharacters=0"},
      {RuleVariant::remove,
       "isReplaceRemoveReplace=0|isReplaceRemoveRemove=1|isReplaceRemoveRemoveCharacters=0|"
       "removeReplaceIndex=1"},
      {RuleVariant::remove_characters,
       "isReplaceRemoveReplace=0|isReplaceRemoveRemove=0|"
       "isReplaceRemoveRemoveCharacters=1|removeReplaceIndex=2"},
      {RuleVariant::as_string, "selectedTab=3|isPrefixSuffixString=1|prefixSuffixIndex=0"},
      {RuleVariant::as_date, "selectedTab=3|isPrefixSuffixString=0|isPrefixSuffixDate=1|prefixSuffixIndex=1"},
      {RuleVariant::photo, "selectedTab=7"},
  };
  for (const Case& c : cases) {
    const Rule rule = rule_of(changed_for(c.variant));
    // Whatever was chosen before.
    for (RenameSettings settings : {RenameSettings{}, all_changed()}) {
      setRule(settings, rule);
      EXPECT_THAT(differing_keys(settings, with(settings, c.settings)), testing::IsEmpty()) << c.settings;
    }
    EXPECT_THAT(differing_keys(rule.settings, with(rule.settings, c.settings)), testing::IsEmpty()) << c.settings;
  }
}

TEST(Rule, SetsTheFlagOfTheOption) {
  struct Case {
    const char* index;
    const char* texts;
    std::vector<const char*> flags;
  };
  const Case cases[] = {
      {"selectedTab=1|insertDeleteInsertOptionIndex=",
       "insertDeleteInsert=x|insertDeleteInsertAtBeforeText=x|insertDeleteInsertAtAfterText=x",
       {"isInsertDeleteInsertAtBeginning", "isInsertDeleteInsertAtEnd", "isInsertDeleteInsertAtPosition",
        "isInsertDeleteInsertAtBeforeText", "isInsertDeleteInsertAtAfterText"}},
      {"selectedTab=4|dateTimeOptionsIndex=",
       "dateTimeAtBeforeText=x|dateTimeAtAfterText=x",
       {"isDateTimeAtBeginning", "isDateTimeAtEnd", "isDateTimeAtPosition", "isDateTimeAtBeforeText",
        "isDateTimeAtAfterText"}},
      {"selectedTab=8|pathComponentsOptionsIndex=",
       "pathComponentsAtBeforeText=x|pathComponentsAtAfterText=x",
       {"isPathComponentsAtBeginning", "isPathComponentsAtEnd", "isPathComponentsAtPosition",
        "isPathComponentsAtBeforeText", "isPathComponentsAtAfterText"}},
      {"selectedTab=5|generalOptionIndex=",
       "generalRemoveAfterString=x|generalRemoveFromString=x|generalFilenameMask=x",
       {"isGeneralConvertFilenameCase", "isGeneralConvertExtension", "isGeneralRemoveExtension",
        "isGeneralChangeExtension", "isGeneralReverseFileName", "isGeneralRemoveSpaces", "isGeneralSwapFromSeperator",
        "isGeneralSwapFromPostion", "isGeneralRemoveAfterString", "isGeneralRemoveFromString", "isGeneralFilenameMask",
        "isGeneralConvertWindowsCompatible"}},
  };
  for (const Case& c : cases) {
    for (std::size_t index = 0; index <= c.flags.size(); ++index) {
      RenameSettings settings;
      setRule(settings, rule_of(with({}, c.index + std::to_string(index) + "|" + c.texts)));
      for (std::size_t i = 0; i < c.flags.size(); ++i) {
        EXPECT_EQ(text_of_setting(settings, *find_setting(c.flags[i])), i == index ? "1" : "0") << c.flags[i];
      }
    }
  }
}

PropertyDictionary dictionary_with(std::initializer_list<PropertyEntry> entries) {
  PropertyDictionary dictionary;
  for (const PropertyEntry& entry : entries) dictionary.append(entry.key, entry.value);
  return dictionary;
}

TEST(RuleDictionary, StoresLikeTheRecordWithListsAsArrays) {
  const PropertyDictionary photo = rule_to_dictionary(rule_of(changed_for(RuleVariant::photo)));
  EXPECT_EQ(*photo.find(u"rule"), PropertyValue(u"Photo"));
  EXPECT_EQ(*photo.find(u"isActive"), PropertyValue(u"1"));
  EXPECT_EQ(*photo.find(u"photoMetaDataList"), PropertyValue(PropertyValue::Array{u"<EXIF_Date>"}));
  EXPECT_EQ(*photo.find(u"MetaDataList"), archived(all_changed().photoMetaDataList));
  EXPECT_EQ(*photo.find(u"photoExtensions"), PropertyValue(PropertyValue::Array{u".A", u".B"}));
  const PropertyDictionary audio = rule_to_dictionary(rule_of(changed_for(RuleVariant::id3_tag)));
  const PropertyDictionary field = dictionary_with(
      {{u"prefix", u"EXIF"}, {u"label", u"Date"}, {u"tagCode", u"<EXIF_Date>"}, {u"metadataCode", u"Date"}});
  EXPECT_EQ(*audio.find(u"id3RenamingTagsList"), PropertyValue(PropertyValue::Array{field}));
  const PropertyDictionary date = rule_to_dictionary(rule_of(changed_for(RuleVariant::date_time)));
  EXPECT_NE(date.find(u"dateTimeCustomDate")->get_if<Date>(), nullptr);
}

TEST(RuleDictionary, HoldsTheSequence) {
  Rule numbers = rule_of(changed_for(RuleVariant::numeric));
  Rule letters = rule_of(changed_for(RuleVariant::alphabetic));
  EXPECT_EQ(*rule_to_dictionary(numbers).find(u"sequence"), PropertyValue(-1));
  EXPECT_EQ(*rule_to_dictionary(letters).find(u"sequence"), PropertyValue(u""));
  numbers.number_sequence = 12;
  letters.letter_sequence = u"ab";
  EXPECT_EQ(rule_from_dictionary(rule_to_dictionary(numbers)).number_sequence, 12);
  EXPECT_EQ(rule_from_dictionary(rule_to_dictionary(letters)).letter_sequence, u"ab");
  numbers.reset_sequence();
  EXPECT_EQ(numbers.number_sequence, -1);
}

// As other programs write property lists: what people type in as a number stands as one, and the other way round.
TEST(RuleDictionary, ReadsNumbersUnderTextKeysAndTextsUnderNumberKeys) {
  const Rule rule = rule_from_dictionary(dictionary_with({{u"rule", u"AlphaNumeric"},
                                                          {u"type", u"Numeric"},
                                                          {u"isActive", 1.0},
                                                          {u"alphaNumericNumericStartWith", 5},
                                                          {u"alphaNumericIncrementBy", 2.0},
                                                          {u"alphaNumericSeperator", true},
                                                          {u"sequence", u"7"}}));
  EXPECT_TRUE(rule.isActive);
  EXPECT_EQ(rule.settings.alphaNumericNumericStartWith, u"5");
  EXPECT_EQ(rule.settings.alphaNumericIncrementBy, u"2");
  EXPECT_EQ(rule.settings.alphaNumericSeperator, u"1");
  EXPECT_EQ(rule.number_sequence, 7);
  const PropertyDictionary field = dictionary_with({{u"tagCode", u"<Year>"}, {u"metadataCode", 271}});
  EXPECT_EQ(fields_of(PropertyValue::Array{field})->front().metadataCode, u"271");
}

TEST(RuleDictionary, ReadsMissingAndWrongValuesAsNothing) {
  const Rule rule = rule_from_dictionary(dictionary_with({{u"rule", u"Date & Time"},
                                                          {u"type", u"DateTime"},
                                                          {u"hasTimeFormat", true},
                                                          {u"dateTimePrefix", PropertyValue::Array{}},
                                                          {u"dateTimeSuffix", u"s"}}));
  EXPECT_FALSE(rule.isActive);
  EXPECT_TRUE(rule.settings.hasTimeFormat);
  EXPECT_FALSE(rule.settings.hasDateFormat);
  EXPECT_EQ(rule.settings.dateTimePrefix, std::nullopt);
  EXPECT_EQ(rule.settings.dateTimeFormatDatePart1, std::nullopt);
  EXPECT_EQ(rule.settings.dateTimeSuffix, u"s");
  EXPECT_EQ(rule.settings.generalSwapPosition, u"1") << "a key of another method has its default";
}

TEST(RuleDictionary, KeepsWhatItDoesNotUnderstand) {
  for (const char16_t* name : {u"Rule - Photo", u"", u"General"}) {
    const PropertyDictionary dictionary = dictionary_with(
        {{u"rule", name}, {u"type", u"Photo"}, {u"isActive", u"1"}, {u"photoExtensions", PropertyValue::Array{u"x"}}});
    const Rule rule = rule_from_dictionary(dictionary);
    EXPECT_EQ(*rule_to_dictionary(rule).find(u"photoExtensions"), *dictionary.find(u"photoExtensions"));
    EXPECT_EQ(variant_of(rule).has_value(), rule.rule == u"General");
  }
  RenameSettings settings = all_changed();
  setRule(settings, rule_from_dictionary({}));
  EXPECT_THAT(differing_keys(settings, all_changed()), testing::IsEmpty());
}

TEST(RuleDictionary, TakesAnUnknownTypeForTheLastVariant) {
  const auto variant = [](const char16_t* rule, const char16_t* type) {
    return variant_of(rule_from_dictionary(dictionary_with({{u"rule", rule}, {u"type", type}})));
  };
  EXPECT_EQ(variant(u"AlphaNumeric", u"?"), RuleVariant::alphabetic);
  EXPECT_EQ(variant(u"InsertDelete", u"insert"), RuleVariant::delete_characters);
  EXPECT_EQ(variant(u"General", u""), RuleVariant::general);
  EXPECT_EQ(variant(u"DateTime", u"DateTime"), std::nullopt);
  const Rule removal = rule_from_dictionary(dictionary_with({{u"rule", u"ReplaceRemove"}, {u"type", u"?"}}));
  EXPECT_TRUE(removal.settings.isReplaceRemoveRemove && !removal.settings.isReplaceRemoveReplace);
}

TEST(RuleDictionary, RunsAPhotoRuleByItsTokens) {
  const FieldList fields = {{u"EXIF", u"Date", u"<EXIF_Date>", u"Date", u""}};
  const auto read = [&](std::initializer_list<PropertyEntry> entries) {
    PropertyDictionary dictionary = dictionary_with({{u"rule", u"Photo"}, {u"type", u"Photo"}});
    for (const PropertyEntry& entry : entries) dictionary.append(entry.key, entry.value);
    return rule_from_dictionary(dictionary).settings.photoMetaDataList;
  };
  const PropertyEntry archive{u"MetaDataList", archived(fields)};
  const PropertyEntry same{u"photoMetaDataList", PropertyValue::Array{u"<EXIF_Date>"}};
  const PropertyEntry other{u"photoMetaDataList", PropertyValue::Array{u"<x>"}};
  EXPECT_EQ(read({archive}), fields);
  EXPECT_EQ(read({same, archive}), fields);
  EXPECT_EQ(read({archive, same}), fields);
  EXPECT_EQ(read({other, archive}), FieldList{field_of_token(u"<x>")});
  EXPECT_EQ(read({other, {u"MetaDataList", u"broken"}}), FieldList{field_of_token(u"<x>")});
}

}  // namespace
}  // namespace brindle
