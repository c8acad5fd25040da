#include "settings/rule.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

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

void copy_carried(RuleVariant variant, const RenameSettings& from, RenameSettings& to) {
  for_each_rule_setting(variant, [&](const SettingRow& row) {
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

}  // namespace brindle
