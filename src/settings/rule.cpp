#include "settings/rule.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "settings/list_values.h"
#include "settings/stored_value.h"

namespace brindle {
namespace {

using S = RenameSettings;

// The variants of a method stand together, the one for an unknown type last.
constexpr auto rule_kinds = std::to_array<RuleKind>({
    {RuleVariant::numeric, 0, u"AlphaNumeric", u"Numeric"},
    {RuleVariant::alphabetic, 0, u"AlphaNumeric", u"Alphabetic"},
    {RuleVariant::insert, 1, u"InsertDelete", u"Insert"},
    {RuleVariant::delete_characters, 1, u"InsertDelete", u"Delete"},
    {RuleVariant::replace, 2, u"ReplaceRemove", u"Replace"},
    {RuleVariant::remove, 2, u"ReplaceRemove", u"Remove"},
    {RuleVariant::remove_characters, 2, u"ReplaceRemove", u"Remove Characters"},
    {RuleVariant::as_string, 3, u"PrefixSuffix", u"As String"},
    {RuleVariant::as_date, 3, u"PrefixSuffix", u"As Date"},
    {RuleVariant::date_time, 4, u"Date & Time", u"DateTime"},
    {RuleVariant::general, 5, u"General", u"General"},
    {RuleVariant::id3_tag, 6, u"ID3", u"ID3Tag"},
    {RuleVariant::photo, 7, u"Photo", u"Photo"},
    {RuleVariant::path_components, 8, u"PathComponents", u"Path Components"},
});
static_assert(std::ranges::is_sorted(rule_kinds, {}, &RuleKind::variant) && rule_kinds.size() == 14);

bool is_sequence(RuleVariant variant) {
  return rule_kind(variant).tab == 0;
}

template <class Visitor>
void for_each_carried(RuleVariant variant, Visitor&& visitor) {
  for (const SettingRow& row : settings_table()) {
    if ((row.rules & rule_bit(variant)) != 0) visitor(row);
  }
}

void copy_carried(RuleVariant variant, const RenameSettings& from, RenameSettings& to) {
  for_each_carried(variant, [&](const SettingRow& row) {
    std::visit(
        [&](auto member) {
          if constexpr (!std::is_same_v<decltype(member), std::monostate>) to.*member = from.*member;
        },
        row.member);
  });
}

// The flags of a tab's exclusive options, by the option's index.

using Flag = bool RenameSettings::*;

constexpr auto insert_flags = std::to_array<Flag>(
    {&S::isInsertDeleteInsertAtBeginning, &S::isInsertDeleteInsertAtEnd, &S::isInsertDeleteInsertAtPosition,
     &S::isInsertDeleteInsertAtBeforeText, &S::isInsertDeleteInsertAtAfterText});
constexpr auto date_flags =
    std::to_array<Flag>({&S::isDateTimeAtBeginning, &S::isDateTimeAtEnd, &S::isDateTimeAtPosition,
                         &S::isDateTimeAtBeforeText, &S::isDateTimeAtAfterText});
constexpr auto path_flags =
    std::to_array<Flag>({&S::isPathComponentsAtBeginning, &S::isPathComponentsAtEnd, &S::isPathComponentsAtPosition,
                         &S::isPathComponentsAtBeforeText, &S::isPathComponentsAtAfterText});
constexpr auto general_flags = std::to_array<Flag>(
    {&S::isGeneralConvertFilenameCase, &S::isGeneralConvertExtension, &S::isGeneralRemoveExtension,
     &S::isGeneralChangeExtension, &S::isGeneralReverseFileName, &S::isGeneralRemoveSpaces,
     &S::isGeneralSwapFromSeperator, &S::isGeneralSwapFromPostion, &S::isGeneralRemoveAfterString,
     &S::isGeneralRemoveFromString, &S::isGeneralFilenameMask, &S::isGeneralConvertWindowsCompatible});

void set_option_flags(RenameSettings& settings, std::span<const Flag> flags, std::int32_t index) {
  for (std::size_t i = 0; i < flags.size(); ++i) settings.*flags[i] = std::cmp_equal(i, index);
}

void select_sequence(RenameSettings& settings, RuleVariant variant) {
  settings.isAlphaNumericNumeric = variant == RuleVariant::numeric;
  settings.isAlphaNumericAlphabetic = variant == RuleVariant::alphabetic;
  settings.alphaNumericNumericAlphabeticIndex = settings.isAlphaNumericAlphabetic ? 1 : 0;
  settings.alphaNumericIncrementDecrementIndex = settings.isAlphaNumericDecrement ? 1 : 0;
}

void select_insertion(RenameSettings& settings, RuleVariant variant) {
  settings.isInsertDeleteInsert = variant == RuleVariant::insert;
  settings.isInsertDeleteDelete = variant == RuleVariant::delete_characters;
  settings.insertDeleteIndex = settings.isInsertDeleteDelete ? 1 : 0;
  if (settings.isInsertDeleteInsert) set_option_flags(settings, insert_flags, settings.insertDeleteInsertOptionIndex);
}

// Whether characters go is itself a carried key of one variant, and off for the others. A rule of that variant that
// says no to it is a plain removal.
void select_replacement(RenameSettings& settings, RuleVariant variant) {
  if (variant != RuleVariant::remove_characters) settings.isReplaceRemoveRemoveCharacters = false;
  settings.isReplaceRemoveReplace = variant == RuleVariant::replace;
  settings.isReplaceRemoveRemove = !settings.isReplaceRemoveReplace && !settings.isReplaceRemoveRemoveCharacters;
  settings.removeReplaceIndex = variant == RuleVariant::replace ? 0 : variant == RuleVariant::remove ? 1 : 2;
}

void select_general(RenameSettings& settings) {
  settings.generalOptionsIndex = settings.generalOptionIndex;
  set_option_flags(settings, general_flags, settings.generalOptionIndex);
}

// Selects the variant's tab and sets its choices; the carried keys are in place already.
void select_variant(RenameSettings& settings, RuleVariant variant) {
  settings.selectedTab = rule_kind(variant).tab;
  switch (settings.selectedTab) {
    case 0:
      return select_sequence(settings, variant);
    case 1:
      return select_insertion(settings, variant);
    case 2:
      return select_replacement(settings, variant);
    case 3:
      settings.prefixSuffixIndex = variant == RuleVariant::as_date ? 1 : 0;
      return;
    case 4:
      return set_option_flags(settings, date_flags, settings.dateTimeOptionsIndex);
    case 5:
      return select_general(settings);
    case 8:
      return set_option_flags(settings, path_flags, settings.pathComponentsOptionsIndex);
    default:
      return;
  }
}

// What the selected tab is of, without looking at its options.
std::optional<RuleVariant> chosen_variant(const RenameSettings& settings) {
  switch (settings.selectedTab) {
    case 0:
      if (settings.isAlphaNumericNumeric) return RuleVariant::numeric;
      return settings.isAlphaNumericAlphabetic ? std::optional(RuleVariant::alphabetic) : std::nullopt;
    case 1: {
      const bool deletes = !settings.isInsertDeleteInsert && settings.isInsertDeleteDelete;
      return deletes ? RuleVariant::delete_characters : RuleVariant::insert;
    }
    case 2:
      if (settings.isReplaceRemoveReplace) return RuleVariant::replace;
      if (!settings.isReplaceRemoveRemove && !settings.isReplaceRemoveRemoveCharacters) return std::nullopt;
      return settings.isReplaceRemoveRemoveCharacters && settings.isReplaceRemoveAllOccurrence
                 ? RuleVariant::remove_characters
                 : RuleVariant::remove;
    case 3:
      return settings.isPrefixSuffixString ? RuleVariant::as_string : RuleVariant::as_date;
    case 4:
      return RuleVariant::date_time;
    case 5:
      return RuleVariant::general;
    case 6:
      return RuleVariant::id3_tag;
    case 7:
      return RuleVariant::photo;
    case 8:
      return RuleVariant::path_components;
    default:
      return std::nullopt;
  }
}

// Stricter than a preview of the tab: no step below 1 for letters either, and the first letter is given whatever the
// kind.
void normalise_sequence(RenameSettings& settings) {
  for (Text RenameSettings::*const step : {&S::alphaNumericIncrementBy, &S::alphaNumericDecrementBy}) {
    const std::int32_t size = integer_of(settings.*step);
    if (size < 1) settings.*step = u"1";
    if (size > 26 && chosen_variant(settings) == RuleVariant::alphabetic) settings.*step = u"26";
  }
  if (!settings.alphaNumericAlphabeticStartWith) settings.alphaNumericAlphabeticStartWith = u"a";
}

std::u16string text_entry(const PropertyDictionary& dictionary, std::u16string_view key) {
  Text text;
  if (const PropertyValue* value = dictionary.find(key)) restore(text, *value);
  return text.value_or(u"");
}

std::u16string key_text(std::string_view key) {
  return {key.begin(), key.end()};
}

constexpr std::u16string_view photo_fields_key = u"MetaDataList";
constexpr std::string_view photo_tags_key = "photoMetaDataList";

// Writing one carried value.

template <class Member>
void append_value(PropertyDictionary& dictionary, std::string_view key, const Member& member) {
  dictionary.append(key_text(key), stored(member));
}
void append_value(PropertyDictionary& dictionary, std::string_view key, const Text& text) {
  if (text) dictionary.append(key_text(key), *text);
}
void append_value(PropertyDictionary& dictionary, std::string_view key, Date date) {
  dictionary.append(key_text(key), date);
}
void append_value(PropertyDictionary& dictionary, std::string_view key, const TextList& texts) {
  dictionary.append(key_text(key), array_of(texts));
}
void append_value(PropertyDictionary& dictionary, std::string_view key, const FieldList& fields) {
  if (key == photo_tags_key) {
    dictionary.append(key_text(key), array_of(MetaDataField::getTagsList(fields)));
    dictionary.append(photo_fields_key, archived(fields));
  } else {
    dictionary.append(key_text(key), array_of(fields));
  }
}

// Reading one; the member is empty before.

template <class Member>
void read_value(Member& member, const PropertyValue& value) {
  restore(member, value);
}
void read_value(TextList& texts, const PropertyValue& value) {
  texts = texts_of(value).value_or(TextList{});
}
void read_value(FieldList& fields, const PropertyValue& value) {
  fields = fields_of(value).value_or(FieldList{});
}

// A photo rule runs by its tokens; the fields beside them add what the editor shows, where they are the same.
void read_photo_fields(FieldList& fields, const PropertyValue& archive) {
  std::optional<FieldList> archived_fields = unarchived_fields(archive);
  if (!archived_fields) return;
  if (fields.empty() || MetaDataField::getTagsList(fields) == MetaDataField::getTagsList(*archived_fields)) {
    fields = std::move(*archived_fields);
  }
}

void clear_carried(RuleVariant variant, RenameSettings& settings) {
  for_each_carried(variant, [&](const SettingRow& row) {
    visit_member(row, settings, [](auto& member) { member = std::remove_reference_t<decltype(member)>{}; });
  });
}

void read_sequence(Rule& rule, const PropertyValue& value) {
  if (const auto* letters = value.get_if<std::u16string>()) {
    rule.letter_sequence = *letters;
  } else {
    restore(rule.number_sequence, value);
  }
}

constexpr bool is_heading(std::u16string_view key) {
  return key == u"rule" || key == u"type" || key == u"isActive";
}

// False when the entry means nothing to this variant.
bool read_entry(Rule& rule, RuleVariant variant, const PropertyEntry& entry) {
  if (variant == RuleVariant::photo && entry.key == photo_fields_key) return true;
  if (is_sequence(variant) && entry.key == u"sequence") {
    read_sequence(rule, entry.value);
    return true;
  }
  const SettingRow* row = find_setting(std::u16string_view(entry.key));
  if (!row || (row->rules & rule_bit(variant)) == 0) return false;
  visit_member(*row, rule.settings, [&entry](auto& member) { read_value(member, entry.value); });
  return true;
}

}  // namespace

const RuleKind& rule_kind(RuleVariant variant) {
  return rule_kinds[static_cast<std::size_t>(variant)];
}

void Rule::reset_sequence() {
  number_sequence = -1;
  letter_sequence.clear();
}

std::optional<RuleVariant> variant_of(const Rule& rule) {
  std::optional<RuleVariant> variant;
  for (const RuleKind& kind : rule_kinds) {
    if (kind.rule != rule.rule) continue;
    variant = kind.variant;
    if (kind.type == rule.type) break;
  }
  return variant;
}

NewRule getRule(RenameSettings& settings) {
  const std::int32_t tab = settings.selectedTab;
  fill_absent_options(settings, tab);
  if (tab == 0) normalise_sequence(settings);
  const std::optional<RuleVariant> variant = chosen_variant(settings);
  if (variant != RuleVariant::delete_characters) {
    if (const std::optional<Refusal> refusal = find_missing_text(settings, tab)) return *refusal;
  }
  if (!variant) return std::monostate{};
  Rule rule;
  rule.rule = rule_kind(*variant).rule;
  rule.type = rule_kind(*variant).type;
  copy_carried(*variant, settings, rule.settings);
  select_variant(rule.settings, *variant);
  return rule;
}

void setRule(RenameSettings& settings, const Rule& rule) {
  const std::optional<RuleVariant> variant = variant_of(rule);
  if (!variant) return;
  copy_carried(*variant, rule.settings, settings);
  select_variant(settings, *variant);
}

PropertyDictionary rule_to_dictionary(const Rule& rule) {
  PropertyDictionary dictionary;
  dictionary.append(u"rule", rule.rule);
  dictionary.append(u"type", rule.type);
  dictionary.append(u"isActive", stored(rule.isActive));
  if (const std::optional<RuleVariant> variant = variant_of(rule)) {
    for_each_carried(*variant, [&](const SettingRow& row) {
      visit_member(row, rule.settings, [&](const auto& member) { append_value(dictionary, row.key, member); });
    });
    if (*variant == RuleVariant::numeric) dictionary.append(u"sequence", rule.number_sequence);
    if (*variant == RuleVariant::alphabetic) dictionary.append(u"sequence", rule.letter_sequence);
  }
  for (const PropertyEntry& entry : rule.other_entries) dictionary.append(entry.key, entry.value);
  return dictionary;
}

Rule rule_from_dictionary(const PropertyDictionary& dictionary) {
  Rule rule;
  rule.rule = text_entry(dictionary, u"rule");
  rule.type = text_entry(dictionary, u"type");
  rule.isActive = false;
  if (const PropertyValue* active = dictionary.find(u"isActive")) restore(rule.isActive, *active);
  const std::optional<RuleVariant> variant = variant_of(rule);
  if (variant) clear_carried(*variant, rule.settings);
  for (const PropertyEntry& entry : dictionary) {
    if (is_heading(entry.key)) continue;
    if (!variant || !read_entry(rule, *variant, entry)) rule.other_entries.append(entry.key, entry.value);
  }
  if (variant) {
    const PropertyValue* fields = dictionary.find(photo_fields_key);
    if (*variant == RuleVariant::photo && fields) read_photo_fields(rule.settings.photoMetaDataList, *fields);
    select_variant(rule.settings, *variant);
  }
  return rule;
}

}  // namespace brindle
