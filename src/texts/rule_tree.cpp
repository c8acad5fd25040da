#include "texts/rule_tree.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "methods/general.h"
#include "methods/placement.h"
#include "platform/file_name.h"
#include "text/date_format.h"
#include "text/date_pattern.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

using S = RenameSettings;

std::u16string_view view(const Text& text) {
  return text ? std::u16string_view(*text) : std::u16string_view();
}

/// Gathers the rows of one rule.
class Rows {
 public:
  explicit Rows(const RenameSettings& settings) : s(settings) {}

  void add(std::string_view label, std::string value) {
    rows_.emplace_back(std::nullopt, localized(label), std::move(value));
  }
  void text(std::string_view label, std::u16string_view value) { add(label, to_utf8(value)); }
  void text(std::string_view label, Text S::*value) { text(label, view(s.*value)); }
  void text_if_any(std::string_view label, Text S::*value) {
    if (!is_blank(s.*value)) text(label, value);
  }
  void text_if(bool S::*on, std::string_view label, Text S::*value) {
    if (s.*on) text(label, value);
  }
  void flag(std::string_view label, bool value) { choice(label, value ? "TRUE" : "FALSE"); }
  void flag(std::string_view label, bool S::*value) { flag(label, s.*value); }
  void number(std::string_view label, std::int32_t value) { add(label, std::to_string(value)); }
  /// The value is a key as well.
  void choice(std::string_view label, std::string_view key) { add(label, localized(key)); }
  void list(std::string_view label, const TextList& members) {
    std::u16string joined;
    for (const std::u16string& member : members) joined.append(joined.empty() ? u"" : u"; ").append(member);
    text(label, joined);
  }

  std::vector<RuleNode> take() { return std::move(rows_); }

  const RenameSettings& s;

 private:
  std::vector<RuleNode> rows_;
};

// Where a text goes, in the words that the insertion, the date and the folder names share.
struct PlacementMembers {
  std::int32_t S::*option;
  Text S::*position;
  std::int32_t S::*direction;
  Text S::*before_text;
  Text S::*before_occurrence;
  Text S::*after_text;
  Text S::*after_occurrence;
};

constexpr PlacementMembers insert_place = {
    &S::insertDeleteInsertOptionIndex,        &S::insertDeleteAtCharacterPositions,
    &S::insertDeleteInsertAtPostionDirection, &S::insertDeleteInsertAtBeforeText,
    &S::insertDeleteInsertAtBeforeOccurrence, &S::insertDeleteInsertAtAfterText,
    &S::insertDeleteInsertAtAfterOccurrence,
};
constexpr PlacementMembers date_place = {
    &S::dateTimeOptionsIndex,          &S::dateTimeAtPositionNo,           &S::dateTimeAtPositionDirection,
    &S::dateTimeAtBeforeText,          &S::dateTimeAtBeforeTextOccurrence, &S::dateTimeAtAfterText,
    &S::dateTimeAtAfterTextOccurrence,
};
constexpr PlacementMembers path_place = {
    &S::pathComponentsOptionsIndex,      &S::pathComponentsAtPositionNo,       &S::pathComponentsAtPositionDirection,
    &S::pathComponentsAtBeforeText,      &S::pathComponentsAtBeforeOccurrence, &S::pathComponentsAtAfterText,
    &S::pathComponentsAtAfterOccurrence,
};

// `what` (UTF-8) is the text that goes there, or "TRUE" where other rows tell it.
void add_place(Rows& rows, const PlacementMembers& place, const std::string& what) {
  const RenameSettings& s = rows.s;
  switch (s.*place.option) {
    case Placement::at_beginning:
      return rows.add("Insert At Beginning", what);
    case Placement::at_end:
      return rows.add("Insert At End", what);
    case Placement::at_position:
      rows.add("Insert At Position", what);
      rows.text("At Character Positions", place.position);
      return rows.choice("Insert From", s.*place.direction == 1 ? "END" : "START");
    case Placement::before_text:
      rows.add("Insert At Before Text", what);
      rows.text("Text To Search", place.before_text);
      return rows.text("On Occurrence", place.before_occurrence);
    case Placement::after_text:
      rows.add("Insert At After Text", what);
      rows.text("Text To Search", place.after_text);
      return rows.text("On Occurrence", place.after_occurrence);
    default:
      return;
  }
}

void add_sequence(Rows& rows, Text S::*start) {
  const RenameSettings& s = rows.s;
  rows.text("Start With", start);
  if (s.isAlphaNumericDecrement) {
    rows.text("Decrement by", &S::alphaNumericDecrementBy);
  } else {
    rows.text("Increment by", &S::alphaNumericIncrementBy);
  }
  rows.flag("Add as Prefix", &S::isAlphaNumericPrefix);
  rows.flag("Add as Suffix", &S::isAlphaNumericSufix);
  rows.text_if(&S::isAlphaNumericSeperator, "Separator", &S::alphaNumericSeperator);
  rows.text_if_any("Padding Mask", &S::alphaNumericPaddingMask);
  rows.flag("Reset Sequence On Each Folder", &S::isAlphaNumericResetSequenceOnEachFolder);
}

void add_deletion(Rows& rows) {
  rows.flag("Delete From Backward", &S::isInsertDeleteDeleteFromBackWard);
  rows.text("From Character Position", &S::insertDeleteFromCharacterPosition);
  rows.text("Number of Characters", &S::insertDeleteNumberOfCharacters);
}

// Which occurrences. Removing by characters counts them even where all are asked for.
void add_occurrences(Rows& rows, bool counts_always) {
  const bool all = rows.s.isReplaceRemoveAllOccurrence;
  if (!counts_always) rows.flag("All Occurrence", all);
  rows.text("Start From Character", &S::replaceRemoveStartFromCharacter);
  if (all && !counts_always) return;
  rows.text("Start On Occurrence", &S::replaceRemoveStartOnOccurrence);
  rows.text("Occurrence Count", &S::replaceRemoveOccuranceCount);
}

void add_replacement(Rows& rows, bool with) {
  rows.text("THIS", &S::replaceRemoveThis);
  if (with) rows.text("WITH", &S::replaceRemoveWith);
  const bool characters = rows.s.isReplaceRemoveRemoveCharacters;
  if (characters) {
    constexpr std::array<std::string_view, 3> types = {"Each of the characters", "Between occurrences",
                                                       "Between occurrences, with them"};
    rows.choice("Remove Type", types[rows.s.replaceRemoveRemoveType == 0   ? 0
                                     : rows.s.replaceRemoveRemoveType == 1 ? 1
                                                                           : 2]);
  }
  rows.flag("Case Sensitive", &S::isReplaceRemoveCaseSensitive);
  rows.choice("Start From",
              rows.s.replaceRemovePositionDirection == 1 ? "End of the filename" : "Beginning of the filename");
  add_occurrences(rows, characters);
}

void add_prefix_and_suffix(Rows& rows, Text S::*prefix, Text S::*suffix) {
  rows.text_if_any("PREFIX", prefix);
  rows.text_if_any("SUFFIX", suffix);
}

void add_prefix_date(Rows& rows) {
  const RenameSettings& s = rows.s;
  const std::int32_t date = s.prefixSuffixFileDateAttribute;
  rows.choice("File Date Attributes", date == 1 ? "Date Created" : date == 2 ? "Date Modified" : "Current Date");
  const DateParts parts = {view(s.prefixSuffixDatePart1),      view(s.prefixSuffixDateSeperator1),
                           view(s.prefixSuffixDatePart2),      view(s.prefixSuffixDateSeperator2),
                           view(s.prefixSuffixDatePart3),      view(s.prefixSuffixTimePart1),
                           view(s.prefixSuffixTimeSeperator1), view(s.prefixSuffixTimePart2),
                           view(s.prefixSuffixTimeSeperator2), view(s.prefixSuffixTimePart3)};
  rows.text("DateAndTime Format", date_pattern(parts) + u" " + time_pattern(parts));
  rows.flag("Add as Prefix", &S::isPrefixSuffixDatePrefix);
  rows.flag("Add as Suffix", &S::isPrefixSuffixDateSuffix);
  add_prefix_and_suffix(rows, &S::prefixSuffixDatePrefix, &S::prefixSuffixDateSuffix);
}

constexpr std::u16string_view full_date = u"dd/MM/yyyy hh:mm:ss a";

void add_date_source(Rows& rows) {
  switch (rows.s.dateTimeDateOptionIndex) {
    case 0:
      return rows.choice("File Date Attributes", "Date Created");
    case 1:
      return rows.choice("File Date Attributes", "Date Modified");
    default:
      rows.choice("Date Source", "Custom Date");
      return rows.text("DATE", format_date(rows.s.dateTimeCustomDate, full_date));
  }
}

void add_date_and_time(Rows& rows) {
  const RenameSettings& s = rows.s;
  add_date_source(rows);
  const DateParts parts = {view(s.dateTimeFormatDatePart1),      view(s.dateTimeFormatDateSeperator1),
                           view(s.dateTimeFormatDatePart2),      view(s.dateTimeFormatDateSeperator2),
                           view(s.dateTimeFormatDatePart3),      view(s.dateTimeFormatTimePart1),
                           view(s.dateTimeFormatTimeSeperator1), view(s.dateTimeFormatTimePart2),
                           view(s.dateTimeFormatTimeSeperator2), view(s.dateTimeFormatTimePart3)};
  if (s.hasDateFormat) rows.text("Date Format", date_pattern(parts));
  if (s.hasTimeFormat) rows.text("Time Format", time_pattern(parts));
  if (!s.hasDateFormat && !s.hasTimeFormat) rows.text("DateAndTime Format", full_date);
  if (s.hasDateFormat && s.hasTimeFormat) rows.text_if_any("Separator", &S::dateTimeSeparator);
  rows.text_if(&S::isDateTimeColonReplace, "Replace colon[:] with character(s)", &S::dateTimeColonReplace);
  add_prefix_and_suffix(rows, &S::dateTimePrefix, &S::dateTimeSuffix);
}

void add_case(Rows& rows, std::string_view label, std::int32_t letter_case) {
  constexpr std::array<std::string_view, 3> cases = {"Upper Case", "Lower Case", "Proper Case"};
  if (letter_case >= 1 && letter_case <= 3) return rows.choice(label, cases[static_cast<std::size_t>(letter_case) - 1]);
  rows.number(label, letter_case);
}

void add_cut(Rows& rows, std::string_view label, Text S::*text, Text S::*occurrence) {
  rows.text(label, text);
  rows.text("On Occurrence", occurrence);
}

void add_general(Rows& rows) {
  switch (static_cast<GeneralOption>(rows.s.generalOptionIndex)) {
    case GeneralOption::convert_filename_case:
      return add_case(rows, "Convert Filename to", rows.s.generalFileNameCase);
    case GeneralOption::convert_extension:
      return add_case(rows, "Convert Extension to", rows.s.generalExtensionCase);
    case GeneralOption::remove_extension:
      return rows.flag("Remove Extension", true);
    case GeneralOption::change_extension:
      return rows.text("Add/Change Extension", &S::generalChangeExtension);
    case GeneralOption::reverse:
      return rows.flag("Reverse Filename", true);
    case GeneralOption::remove_spaces:
      return rows.flag("Remove Spaces", true);
    case GeneralOption::swap_from_seperator:
      return rows.text("Swap Filename by separator", &S::generalSwapSeperator);
    case GeneralOption::swap_from_position:
      return rows.text("Swap Filename by position", &S::generalSwapPosition);
    case GeneralOption::remove_after_string:
      return add_cut(rows, "Remove All Characters After", &S::generalRemoveAfterString,
                     &S::generalRemoveAfterStringOccurrence);
    case GeneralOption::remove_from_string:
      return add_cut(rows, "Remove All Characters From", &S::generalRemoveFromString,
                     &S::generalRemoveFromStringOccurrence);
    case GeneralOption::filename_mask:
      return rows.text("Filename Padding Mask", &S::generalFilenameMask);
    case GeneralOption::convert_windows_compatible:
      rows.flag("Convert Filename To Windows Compatible", true);
      return rows.text("Replace With", &S::generalConvertWindowsCompatibleString);
  }
}

void add_audio(Rows& rows) {
  rows.text("Renaming Mask", &S::id3RenamingMask);
  rows.text_if(&S::isID3RenamingSeperator, "Separator", &S::id3RenamingSeperator);
  rows.text_if(&S::isID3RenamingColonReplace, "Replace colon[:] with character(s)", &S::id3RenamingColonReplace);
  rows.list("Allowed Extensions", rows.s.id3Extensions);
}

void add_photo(Rows& rows) {
  const RenameSettings& s = rows.s;
  rows.text("Renaming Mask", &S::photoRenamingMask);
  rows.text_if(&S::isPhotoRenamingSeperator, "Separator", &S::photoRenamingSeperator);
  rows.text_if(&S::isPhotoRenamingColonReplace, "Replace colon[:] with character(s)", &S::photoRenamingColonReplace);
  const DateParts parts = {view(s.photoDatePart1),      view(s.photoDateSeperator1), view(s.photoDatePart2),
                           view(s.photoDateSeperator2), view(s.photoDatePart3),      view(s.photoTimePart1),
                           view(s.photoTimeSeperator1), view(s.photoTimePart2),      view(s.photoTimeSeperator2),
                           view(s.photoTimePart3)};
  rows.text("Date Format", date_pattern(parts));
  rows.text("Time Format", time_pattern(parts));
  rows.text_if_any("Sequence Padding Mask", &S::photoPaddingMask);
  rows.flag("Reset Sequence On Each Folder", &S::isPhotoResetSequenceOnEachFolder);
  rows.list("Allowed Extensions", s.photoExtensions);
}

void add_path(Rows& rows) {
  rows.number("Parent folders level", rows.s.pathComponentsLevelNo);
  rows.text_if_any("Separator", &S::pathComponentsSeparator);
  add_prefix_and_suffix(rows, &S::pathComponentsPrefix, &S::pathComponentsSuffix);
}

void add_rows(Rows& rows, RuleVariant variant) {
  switch (variant) {
    case RuleVariant::numeric:
      return add_sequence(rows, &S::alphaNumericNumericStartWith);
    case RuleVariant::alphabetic:
      return add_sequence(rows, &S::alphaNumericAlphabeticStartWith);
    case RuleVariant::insert:
      return add_place(rows, insert_place, to_utf8(view(rows.s.insertDeleteInsert)));
    case RuleVariant::delete_characters:
      return add_deletion(rows);
    case RuleVariant::replace:
    case RuleVariant::remove:
    case RuleVariant::remove_characters:
      return add_replacement(rows, variant == RuleVariant::replace);
    case RuleVariant::as_string:
      return add_prefix_and_suffix(rows, &S::prefixSuffixPrefix, &S::prefixSuffixSuffix);
    case RuleVariant::as_date:
      return add_prefix_date(rows);
    case RuleVariant::date_time:
      add_date_and_time(rows);
      return add_place(rows, date_place, localized("TRUE"));
    case RuleVariant::general:
      return add_general(rows);
    case RuleVariant::id3_tag:
      return add_audio(rows);
    case RuleVariant::photo:
      return add_photo(rows);
    case RuleVariant::path_components:
      add_path(rows);
      return add_place(rows, path_place, localized("TRUE"));
  }
}

}  // namespace

RuleNode::RuleNode(const Rule& rule)
    : rule_(rule), option_(localized(to_utf8(rule.type))), value_(localized(to_utf8(rule.rule))) {}

RuleNode::RuleNode(std::optional<Rule> rule, std::string option, std::string value)
    : rule_(std::move(rule)), option_(std::move(option)), value_(std::move(value)) {}

const std::vector<RuleNode>& RuleNode::children() const {
  if (children_) return *children_;
  children_.emplace();
  const std::optional<RuleVariant> variant = rule_ ? variant_of(*rule_) : std::nullopt;
  if (variant) {
    Rows rows(rule_->settings);
    add_rows(rows, *variant);
    children_ = rows.take();
  }
  return *children_;
}

std::vector<RuleNode> rule_nodes(std::span<const Rule> rules) {
  std::vector<RuleNode> nodes;
  nodes.reserve(rules.size());
  for (const Rule& rule : rules) nodes.emplace_back(rule);
  return nodes;
}

}  // namespace brindle
