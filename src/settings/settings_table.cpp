#include "settings/settings_table.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <utility>

namespace brindle {
namespace {

constexpr bool watched = true;
constexpr bool quiet = false;

// Which rules carry a key.
constexpr RuleSet none = 0;
constexpr RuleSet numeric = rule_bit(RuleVariant::numeric);
constexpr RuleSet letters = rule_bit(RuleVariant::alphabetic);
constexpr RuleSet sequences = numeric | letters;
constexpr RuleSet insertion = rule_bit(RuleVariant::insert);
constexpr RuleSet deletion = rule_bit(RuleVariant::delete_characters);
constexpr RuleSet replacements = rule_bit(RuleVariant::replace) | rule_bit(RuleVariant::remove);
constexpr RuleSet characters = rule_bit(RuleVariant::remove_characters);
constexpr RuleSet replacing = replacements | characters;
constexpr RuleSet prefixes = rule_bit(RuleVariant::as_string) | rule_bit(RuleVariant::as_date);
constexpr RuleSet dates = rule_bit(RuleVariant::date_time);
constexpr RuleSet general = rule_bit(RuleVariant::general);
constexpr RuleSet audio_tags = rule_bit(RuleVariant::id3_tag);
constexpr RuleSet photos = rule_bit(RuleVariant::photo);
constexpr RuleSet paths = rule_bit(RuleVariant::path_components);

// A member's name is its key, so neither can be written without the other.
#define ROW(name, tab, change, rules, meaning)                            \
  SettingRow {                                                            \
#name, &RenameSettings::name, SettingTab::tab, change, rules, meaning \
  }

// clang-format off
constexpr std::array<SettingRow, setting_count> table = {{
    // All methods.
    SettingRow{"appVersion", std::monostate{}, SettingTab::all_tabs, quiet, none,
        "version of the program that wrote the record"},
    ROW(selectedTab, all_tabs, quiet, none,
        "method: 0 sequence, 1 insert/delete, 2 replace/remove, 3 prefix/suffix, 4 date and time, 5 "
        "general, 6 audio tags, 7 photo metadata, 8 path components, 9 rename from list"),
    ROW(isFiles, all_tabs, quiet, none, "rename files"),
    ROW(isFolders, all_tabs, quiet, none, "rename folders"),
    ROW(isIncludeSubFolders, all_tabs, quiet, none, "descend into subfolders"),

    // Number and letter sequences (tab 0).
    ROW(isAlphaNumericIncrement, sequence, quiet, sequences, "count upwards"),
    ROW(isAlphaNumericDecrement, sequence, quiet, sequences, "count downwards (wins over counting upwards)"),
    ROW(isAlphaNumericNumeric, sequence, quiet, none, "number the items"),
    ROW(isAlphaNumericAlphabetic, sequence, quiet, none, "letter the items: a, b, ... z, aa"),
    ROW(isAlphaNumericPrefix, sequence, watched, sequences, "put the number or letters before the name"),
    ROW(isAlphaNumericSufix, sequence, watched, sequences,
        "put the number or letters after the name; with neither side chosen they replace the name"),
    ROW(isAlphaNumericSeperator, sequence, watched, sequences, "put a separator between name and number"),
    ROW(alphaNumericSeperator, sequence, watched, sequences, "the separator"),
    ROW(alphaNumericPaddingMask, sequence, watched, sequences,
        "its length is the width, its first characters fill up: 000 makes 7 into 007"),
    ROW(alphaNumericNumericStartWith, sequence, watched, numeric, "first number"),
    ROW(alphaNumericAlphabeticStartWith, sequence, watched, letters, "first letters, a to z"),
    ROW(alphaNumericIncrementBy, sequence, watched, sequences, "step upwards, at least 1 (letters: at most 26)"),
    ROW(alphaNumericDecrementBy, sequence, watched, sequences, "step downwards, at least 1 (letters: at most 26)"),
    ROW(isAlphaNumericResetSequenceOnEachFolder, sequence, watched, sequences, "start again in each folder"),

    // Insert and delete (tab 1).
    ROW(isInsertDeleteInsert, insert_delete, quiet, none, "insert a text"),
    ROW(insertDeleteInsert, insert_delete, watched, insertion, "the text to insert"),
    ROW(insertDeleteInsertOptionIndex, insert_delete, quiet, insertion,
        "where: 0 beginning, 1 end, 2 position, 3 before a text, 4 after a text"),
    ROW(isInsertDeleteInsertAtBeginning, insert_delete, quiet, none, "choice shown in the window: at the beginning"),
    ROW(isInsertDeleteInsertAtEnd, insert_delete, quiet, none, "choice shown in the window: at the end"),
    ROW(isInsertDeleteInsertAtPosition, insert_delete, quiet, none, "choice shown in the window: at a position"),
    ROW(insertDeleteAtCharacterPositions, insert_delete, watched, insertion, "position of the inserted text, from 1"),
    ROW(insertDeleteInsertAtPostionDirection, insert_delete, watched, insertion,
        "count the position from the start (0) or the end (1)"),
    ROW(isInsertDeleteInsertAtBeforeText, insert_delete, quiet, none, "choice shown in the window: before a text"),
    ROW(insertDeleteInsertAtBeforeText, insert_delete, watched, insertion, "insert before this text"),
    ROW(insertDeleteInsertAtBeforeOccurrence, insert_delete, watched, insertion, "which occurrence of it, from 1"),
    ROW(isInsertDeleteInsertAtAfterText, insert_delete, quiet, none, "choice shown in the window: after a text"),
    ROW(insertDeleteInsertAtAfterText, insert_delete, watched, insertion, "insert after this text"),
    ROW(insertDeleteInsertAtAfterOccurrence, insert_delete, watched, insertion, "which occurrence of it, from 1"),
    ROW(isInsertDeleteDelete, insert_delete, quiet, none, "delete characters"),
    ROW(isInsertDeleteDeleteFromBackWard, insert_delete, watched, deletion, "count from the end of the name"),
    ROW(insertDeleteFromCharacterPosition, insert_delete, watched, deletion, "first character to delete, from 1"),
    ROW(insertDeleteNumberOfCharacters, insert_delete, watched, deletion, "how many characters to delete"),

    // Replace and remove (tab 2).
    ROW(isReplaceRemoveReplace, replace_remove, quiet, none, "replace a text"),
    ROW(isReplaceRemoveRemove, replace_remove, quiet, none, "remove a text"),
    ROW(isReplaceRemoveRemoveCharacters, replace_remove, quiet, characters,
        "remove single characters or what lies between occurrences"),
    ROW(replaceRemoveThis, replace_remove, watched, replacing, "the text to look for, or the characters to remove"),
    ROW(replaceRemoveWith, replace_remove, watched, replacements, "the replacement"),
    ROW(replaceRemoveRemoveType, replace_remove, watched, replacing,
        "what is removed: 0 each of the characters, 1 between two occurrences, 2 the same with the "
        "occurrences"),
    ROW(isReplaceRemoveCaseSensitive, replace_remove, watched, replacing, "upper and lower case differ"),
    ROW(isReplaceRemoveAllOccurrence, replace_remove, watched, replacing, "every occurrence"),
    ROW(replaceRemovePositionDirection, replace_remove, watched, replacing,
        "work from the start (0) or the end (1) of the name"),
    ROW(replaceRemoveStartFromCharacter, replace_remove, watched, replacing, "first character to look at, from 1"),
    ROW(replaceRemoveStartOnOccurrence, replace_remove, watched, replacing, "first occurrence to treat, from 1"),
    ROW(replaceRemoveOccuranceCount, replace_remove, watched, replacing, "how many occurrences to treat; -1 all"),

    // Prefix and suffix (tab 3).
    ROW(isPrefixSuffixString, prefix_suffix, quiet, prefixes, "add texts"),
    ROW(isPrefixSuffixDate, prefix_suffix, quiet, prefixes, "add a date"),
    ROW(isPrefixSuffixDatePrefix, prefix_suffix, quiet, prefixes, "put the date before the name"),
    ROW(isPrefixSuffixDateSuffix, prefix_suffix, quiet, prefixes, "put the date after the name"),
    ROW(prefixSuffixFileDateAttribute, prefix_suffix, quiet, prefixes, "which date: 0 now, 1 created, 2 modified"),
    ROW(prefixSuffixPrefix, prefix_suffix, quiet, prefixes, "text before the name"),
    ROW(prefixSuffixSuffix, prefix_suffix, quiet, prefixes, "text after the name"),
    ROW(prefixSuffixDatePart1, prefix_suffix, quiet, prefixes,
        "first part of the date, a Unicode date pattern such as dd, MM or yyyy; None leaves it out"),
    ROW(prefixSuffixDateSeperator1, prefix_suffix, quiet, prefixes, "between the first and second part of the date"),
    ROW(prefixSuffixDatePart2, prefix_suffix, quiet, prefixes, "second part of the date"),
    ROW(prefixSuffixDateSeperator2, prefix_suffix, quiet, prefixes, "between the second and third part of the date"),
    ROW(prefixSuffixDatePart3, prefix_suffix, quiet, prefixes, "third part of the date"),
    ROW(prefixSuffixTimePart1, prefix_suffix, quiet, prefixes,
        "first part of the time, a Unicode date pattern such as HH, mm or ss; None leaves it out"),
    ROW(prefixSuffixTimeSeperator1, prefix_suffix, quiet, prefixes, "between the first and second part of the time"),
    ROW(prefixSuffixTimePart2, prefix_suffix, quiet, prefixes, "second part of the time"),
    ROW(prefixSuffixTimeSeperator2, prefix_suffix, quiet, prefixes, "between the second and third part of the time"),
    ROW(prefixSuffixTimePart3, prefix_suffix, quiet, prefixes, "third part of the time"),
    ROW(prefixSuffixDatePrefix, prefix_suffix, quiet, prefixes, "text before the date"),
    ROW(prefixSuffixDateSuffix, prefix_suffix, quiet, prefixes, "text after the date"),

    // Date and time (tab 4).
    ROW(dateTimeDateOptionIndex, date_time, quiet, dates, "which date: 0 created, 1 modified, 2 dateTimeCustomDate"),
    ROW(hasDateTimeCustomDate, date_time, quiet, dates, "choice shown in the window: a date of your own"),
    ROW(dateTimeCustomDate, date_time, watched, dates, "a date of your own"),
    ROW(dateTimeOptionsIndex, date_time, quiet, dates,
        "where: 0 beginning, 1 end, 2 position, 3 before a text, 4 after a text"),
    ROW(isDateTimeAtBeginning, date_time, quiet, none, "choice shown in the window: at the beginning"),
    ROW(isDateTimeAtEnd, date_time, quiet, none, "choice shown in the window: at the end"),
    ROW(isDateTimeAtPosition, date_time, quiet, none, "choice shown in the window: at a position"),
    ROW(isDateTimeAtBeforeText, date_time, quiet, none, "choice shown in the window: before a text"),
    ROW(isDateTimeAtAfterText, date_time, quiet, none, "choice shown in the window: after a text"),
    ROW(dateTimeAtPositionNo, date_time, watched, dates, "position of the date, from 1"),
    ROW(dateTimeAtPositionDirection, date_time, watched, dates, "count the position from the start (0) or the end (1)"),
    ROW(dateTimeAtBeforeText, date_time, watched, dates, "put the date before this text"),
    ROW(dateTimeAtBeforeTextOccurrence, date_time, watched, dates, "which occurrence of it, from 1"),
    ROW(dateTimeAtAfterText, date_time, watched, dates, "put the date after this text"),
    ROW(dateTimeAtAfterTextOccurrence, date_time, watched, dates, "which occurrence of it, from 1"),
    ROW(hasDateFormat, date_time, watched, dates, "write the date"),
    ROW(hasTimeFormat, date_time, watched, dates, "write the time"),
    ROW(dateTimeFormatDatePart1, date_time, watched, dates,
        "first part of the date, a Unicode date pattern such as dd, MM or yyyy; None leaves it out"),
    ROW(dateTimeFormatDateSeperator1, date_time, watched, dates, "between the first and second part of the date"),
    ROW(dateTimeFormatDatePart2, date_time, watched, dates, "second part of the date"),
    ROW(dateTimeFormatDateSeperator2, date_time, watched, dates, "between the second and third part of the date"),
    ROW(dateTimeFormatDatePart3, date_time, watched, dates, "third part of the date"),
    ROW(dateTimeFormatTimePart1, date_time, watched, dates,
        "first part of the time, a Unicode date pattern such as HH, mm or ss; None leaves it out"),
    ROW(dateTimeFormatTimeSeperator1, date_time, watched, dates, "between the first and second part of the time"),
    ROW(dateTimeFormatTimePart2, date_time, watched, dates, "second part of the time"),
    ROW(dateTimeFormatTimeSeperator2, date_time, watched, dates, "between the second and third part of the time"),
    ROW(dateTimeFormatTimePart3, date_time, watched, dates, "third part of the time"),
    ROW(isDateTimeColonReplace, date_time, watched, dates, "replace each colon of the date"),
    ROW(dateTimeColonReplace, date_time, watched, dates, "what replaces a colon"),
    ROW(dateTimeSeparator, date_time, watched, dates, "between date and time"),
    ROW(dateTimePrefix, date_time, watched, dates, "text before the date"),
    ROW(dateTimeSuffix, date_time, watched, dates, "text after the date"),

    // General transformations (tab 5).
    ROW(generalOptionIndex, general_method, quiet, general,
        "what to do: 0 case of the name, 1 case of the extension, 2 remove the extension, 3 change it, 4 "
        "reverse, 5 remove spaces, 6 swap at a separator, 7 swap at a position, 8 remove after a text, 9 "
        "remove from a text, 10 mask, 11 Windows-compatible"),
    ROW(generalFileNameCase, general_method, watched, general, "case of the name: 1 upper, 2 lower, 3 proper"),
    ROW(generalExtensionCase, general_method, watched, general, "case of the extension: 1 upper, 2 lower, 3 proper"),
    ROW(isGeneralConvertFilenameCase, general_method, quiet, none, "choice shown in the window: case of the name"),
    ROW(isGeneralConvertExtension, general_method, quiet, none, "choice shown in the window: case of the extension"),
    ROW(isGeneralRemoveExtension, general_method, quiet, none, "choice shown in the window: remove the extension"),
    ROW(isGeneralChangeExtension, general_method, quiet, none,
        "choice shown in the window: add or change the extension"),
    ROW(isGeneralReverseFileName, general_method, quiet, none, "choice shown in the window: reverse the name"),
    ROW(isGeneralRemoveSpaces, general_method, quiet, none, "choice shown in the window: remove spaces"),
    ROW(isGeneralSwapFromSeperator, general_method, quiet, none, "choice shown in the window: swap at a separator"),
    ROW(isGeneralSwapFromPostion, general_method, quiet, none, "choice shown in the window: swap at a position"),
    ROW(isGeneralRemoveAfterString, general_method, quiet, none,
        "choice shown in the window: remove everything after a text"),
    ROW(isGeneralRemoveFromString, general_method, quiet, none,
        "choice shown in the window: remove everything from a text on"),
    ROW(isGeneralConvertWindowsCompatible, general_method, quiet, none,
        "choice shown in the window: Windows-compatible name"),
    ROW(isGeneralFilenameMask, general_method, quiet, none, "choice shown in the window: name mask"),
    ROW(generalChangeExtension, general_method, watched, general, "the new extension, without the dot"),
    ROW(generalSwapSeperator, general_method, watched, general, "swap what stands before and after this text"),
    ROW(generalSwapPosition, general_method, watched, general,
        "swap what stands before and after this character, from 1"),
    ROW(generalRemoveAfterString, general_method, watched, general, "remove everything after this text"),
    ROW(generalRemoveFromString, general_method, watched, general, "remove this text and everything after it"),
    ROW(generalRemoveAfterStringOccurrence, general_method, watched, general,
        "which occurrence of the text to remove after, from 1"),
    ROW(generalRemoveFromStringOccurrence, general_method, watched, general,
        "which occurrence of the text to remove from, from 1"),
    ROW(generalConvertWindowsCompatibleString, general_method, watched, general,
        "what replaces a character that Windows forbids"),
    ROW(generalFilenameMask, general_method, watched, general,
        "its length is the length of every name: shorter names are filled with its first characters, "
        "longer ones keep their end"),

    // Photo metadata (tab 7).
    ROW(isPhotoRenamingSeperator, photo, quiet, photos, "put a separator between the values"),
    ROW(isPhotoRenamingColonReplace, photo, quiet, photos, "replace each colon of a value"),
    ROW(photoRenamingSeperator, photo, quiet, photos, "the separator"),
    ROW(photoRenamingColonReplace, photo, quiet, photos, "what replaces a colon"),
    ROW(photoRenamingMask, photo, quiet, photos, "the mask as one text, made from photoMetaDataList"),
    ROW(photoDatePart1, photo, quiet, photos,
        "first part of the date, a Unicode date pattern such as dd, MM or yyyy; None leaves it out"),
    ROW(photoDateSeperator1, photo, quiet, photos, "between the first and second part of the date"),
    ROW(photoDatePart2, photo, quiet, photos, "second part of the date"),
    ROW(photoDateSeperator2, photo, quiet, photos, "between the second and third part of the date"),
    ROW(photoDatePart3, photo, quiet, photos, "third part of the date"),
    ROW(photoTimePart1, photo, quiet, photos,
        "first part of the time, a Unicode date pattern such as HH, mm or ss; None leaves it out"),
    ROW(photoTimeSeperator1, photo, quiet, photos, "between the first and second part of the time"),
    ROW(photoTimePart2, photo, quiet, photos, "second part of the time"),
    ROW(photoTimeSeperator2, photo, quiet, photos, "between the second and third part of the time"),
    ROW(photoTimePart3, photo, quiet, photos, "third part of the time"),
    ROW(photoPaddingMask, photo, quiet, photos,
        "its length is the width of the running number, its first characters fill up"),
    ROW(photoMetaDataList, photo, quiet, photos,
        "the mask: tokens such as <EXIF_Date>, and texts of your own such as < - >"),
    ROW(photoExtensions, photo, quiet, photos, "extensions of the files that take part"),
    ROW(isPhotoResetSequenceOnEachFolder, photo, quiet, photos, "start the running number again in each folder"),

    // Audio tags (tab 6).
    ROW(isID3RenamingSeperator, audio, quiet, audio_tags, "put a separator between the values"),
    ROW(isID3RenamingColonReplace, audio, quiet, audio_tags, "replace each colon of a value"),
    ROW(id3RenamingSeperator, audio, quiet, audio_tags, "the separator"),
    ROW(id3RenamingColonReplace, audio, quiet, audio_tags, "what replaces a colon"),
    ROW(id3RenamingMask, audio, quiet, audio_tags, "the mask as one text, made from id3RenamingTagsList"),
    ROW(id3RenamingTagsList, audio, quiet, audio_tags,
        "the mask: tokens such as <Artist>, and texts of your own such as < - >"),
    ROW(id3Extensions, audio, quiet, audio_tags, "extensions of the files that take part"),

    // Path components (tab 8).
    ROW(isPathComponentsAtBeginning, path, quiet, none, "choice shown in the window: at the beginning"),
    ROW(isPathComponentsAtEnd, path, quiet, none, "choice shown in the window: at the end"),
    ROW(isPathComponentsAtPosition, path, quiet, none, "choice shown in the window: at a position"),
    ROW(isPathComponentsAtBeforeText, path, quiet, none, "choice shown in the window: before a text"),
    ROW(isPathComponentsAtAfterText, path, quiet, none, "choice shown in the window: after a text"),
    ROW(pathComponentsLevelNo, path, watched, paths, "how many parent folders"),
    ROW(pathComponentsOptionsIndex, path, watched, paths,
        "where: 0 beginning, 1 end, 2 position, 3 before a text, 4 after a text"),
    ROW(pathComponentsAtPositionNo, path, watched, paths, "position of the folder names, from 1"),
    ROW(pathComponentsAtPositionDirection, path, watched, paths,
        "count the position from the start (0) or the end (1)"),
    ROW(pathComponentsAtBeforeText, path, watched, paths, "put the folder names before this text"),
    ROW(pathComponentsAtBeforeOccurrence, path, watched, paths, "which occurrence of it, from 1"),
    ROW(pathComponentsAtAfterText, path, watched, paths, "put the folder names after this text"),
    ROW(pathComponentsAtAfterOccurrence, path, watched, paths, "which occurrence of it, from 1"),
    ROW(pathComponentsSeparator, path, watched, paths, "between two folder names"),
    ROW(pathComponentsPrefix, path, watched, paths, "text before the folder names"),
    ROW(pathComponentsSuffix, path, watched, paths, "text after the folder names"),

    // Positions of the window's choices, and the list file of tab 9.
    ROW(fileFolderIndex, window, quiet, none, "choice shown in the window: 0 files, 1 folders"),
    ROW(alphaNumericIncrementDecrementIndex, window, quiet, none, "choice shown in the window: 0 upwards, 1 downwards"),
    ROW(alphaNumericNumericAlphabeticIndex, window, quiet, none, "choice shown in the window: 0 numbers, 1 letters"),
    ROW(insertDeleteIndex, window, quiet, none, "choice shown in the window: 0 insert, 1 delete"),
    ROW(removeReplaceIndex, window, quiet, none,
        "choice shown in the window: 0 replace, 1 remove, 2 remove characters"),
    ROW(prefixSuffixIndex, window, quiet, none, "choice shown in the window: 0 texts, 1 date"),
    ROW(generalOptionsIndex, window, quiet, none, "choice shown in the window: the same numbers as generalOptionIndex"),
    ROW(renameFile, window, quiet, none, "path of the tab-delimited list with the new names"),
}};
// clang-format on
#undef ROW

// Proof that the table is whole: its keys are unique and are names of members, and the struct has no member besides.

constexpr bool keys_are_unique() {
  std::array<std::string_view, setting_count> keys;
  std::ranges::transform(table, keys.begin(), &SettingRow::key);
  std::ranges::sort(keys);
  return std::ranges::adjacent_find(keys) == keys.end();
}
static_assert(keys_are_unique());
static_assert(std::ranges::count(table, true, &SettingRow::counts_as_change) == watched_setting_count);
static_assert(std::ranges::count_if(table, [](const SettingRow& row) { return row.member.index() == 0; }) == 1);
static_assert(table.front().key == "appVersion" && table.back().key == "renameFile");

// Turns into whatever a member may be. Not into just anything: that would fit a Text in two ways.
template <class T>
concept member_kind = std::is_arithmetic_v<T> || std::same_as<T, Text> || std::same_as<T, Date> ||
    std::same_as<T, TextList> || std::same_as<T, FieldList>;
struct AnyMember {
  template <member_kind T>
  operator T() const;  // NOLINT(google-explicit-constructor)
};

template <std::size_t... I>
constexpr bool takes_members(std::index_sequence<I...>) {
  return requires {
    RenameSettings{(static_cast<void>(I), AnyMember{})...};
  };
}
static_assert(takes_members(std::make_index_sequence<setting_count - 1>{}));
static_assert(!takes_members(std::make_index_sequence<setting_count>{}), "a member of RenameSettings has no row");

// Open addressing, a third full: a key is found in one or two steps.
constexpr std::size_t slot_count = 512;
constexpr std::uint8_t empty_slot = 255;
static_assert(setting_count < empty_slot);

template <class Char>
constexpr std::size_t slot_of(std::basic_string_view<Char> key) {
  std::uint32_t hash = 2166136261U;
  for (const Char c : key) hash = (hash ^ static_cast<std::uint32_t>(c)) * 16777619U;
  return (hash ^ (hash >> 16U)) % slot_count;
}

constexpr std::array<std::uint8_t, slot_count> build_slots() {
  std::array<std::uint8_t, slot_count> slots{};
  slots.fill(empty_slot);
  for (std::size_t i = 0; i < table.size(); ++i) {
    std::size_t slot = slot_of(table[i].key);
    while (slots[slot] != empty_slot) slot = (slot + 1) % slot_count;
    slots[slot] = static_cast<std::uint8_t>(i);
  }
  return slots;
}
constexpr std::array<std::uint8_t, slot_count> slots = build_slots();

template <class Char>
const SettingRow* find_row(std::basic_string_view<Char> key) {
  for (std::size_t slot = slot_of(key); slots[slot] != empty_slot; slot = (slot + 1) % slot_count) {
    const SettingRow& row = table[slots[slot]];
    if (std::ranges::equal(row.key, key, [](char a, Char b) { return static_cast<Char>(a) == b; })) return &row;
  }
  return nullptr;
}

}  // namespace

std::span<const SettingRow, setting_count> settings_table() {
  return table;
}

const SettingRow* find_setting(std::string_view key) {
  return find_row(key);
}
const SettingRow* find_setting(std::u16string_view key) {
  return find_row(key);
}

SettingSet compare_settings(const RenameSettings& a, const RenameSettings& b) {
  SettingSet different;
  for (std::size_t i = 0; i < table.size(); ++i) {
    std::visit(
        [&](auto member) {
          if constexpr (!std::is_same_v<decltype(member), std::monostate>) different[i] = a.*member != b.*member;
        },
        table[i].member);
  }
  return different;
}

const SettingSet& watched_settings() {
  static const SettingSet set = [] {
    SettingSet rows;
    for (std::size_t i = 0; i < table.size(); ++i) rows[i] = table[i].counts_as_change;
    return rows;
  }();
  return set;
}

}  // namespace brindle
