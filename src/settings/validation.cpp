#include "settings/validation.h"

#include <array>

namespace brindle {
namespace {

struct AbsentDefault {
  std::int32_t tab;
  Text RenameSettings::*text;
  std::u16string_view value = {};
};

using S = RenameSettings;

constexpr auto absent_defaults = std::to_array<AbsentDefault>({
    {sequence_tab, &S::alphaNumericPaddingMask},
    {sequence_tab, &S::alphaNumericSeperator},
    {replace_remove_tab, &S::replaceRemoveWith},
    {prefix_suffix_tab, &S::prefixSuffixPrefix},
    {prefix_suffix_tab, &S::prefixSuffixSuffix},
    {prefix_suffix_tab, &S::prefixSuffixDateSeperator1},
    {prefix_suffix_tab, &S::prefixSuffixDateSeperator2},
    {prefix_suffix_tab, &S::prefixSuffixTimeSeperator1},
    {prefix_suffix_tab, &S::prefixSuffixTimeSeperator2},
    {prefix_suffix_tab, &S::prefixSuffixDatePrefix},
    {prefix_suffix_tab, &S::prefixSuffixDateSuffix},
    {date_time_tab, &S::dateTimeFormatDatePart1},
    {date_time_tab, &S::dateTimeFormatDateSeperator1},
    {date_time_tab, &S::dateTimeFormatDatePart2},
    {date_time_tab, &S::dateTimeFormatDateSeperator2},
    {date_time_tab, &S::dateTimeFormatDatePart3},
    {date_time_tab, &S::dateTimeFormatTimePart1},
    {date_time_tab, &S::dateTimeFormatTimeSeperator1},
    {date_time_tab, &S::dateTimeFormatTimePart2},
    {date_time_tab, &S::dateTimeFormatTimeSeperator2},
    {date_time_tab, &S::dateTimeFormatTimePart3},
    {date_time_tab, &S::dateTimeColonReplace},
    {date_time_tab, &S::dateTimeSeparator},
    {date_time_tab, &S::dateTimePrefix},
    {date_time_tab, &S::dateTimeSuffix},
    {general_tab, &S::generalChangeExtension},
    {general_tab, &S::generalSwapSeperator},
    {general_tab, &S::generalRemoveAfterString},
    {general_tab, &S::generalRemoveFromString},
    {general_tab, &S::generalConvertWindowsCompatibleString},
    {general_tab, &S::generalFilenameMask},
    {general_tab, &S::generalSwapPosition, u"1"},
    {general_tab, &S::generalRemoveAfterStringOccurrence, u"1"},
    {general_tab, &S::generalRemoveFromStringOccurrence, u"1"},
    {audio_tab, &S::id3RenamingSeperator},
    {audio_tab, &S::id3RenamingColonReplace},
    {photo_tab, &S::photoRenamingSeperator},
    {photo_tab, &S::photoRenamingColonReplace},
    {photo_tab, &S::photoDateSeperator1},
    {photo_tab, &S::photoDateSeperator2},
    {photo_tab, &S::photoTimeSeperator1},
    {photo_tab, &S::photoTimeSeperator2},
    {photo_tab, &S::photoPaddingMask},
    {path_components_tab, &S::pathComponentsSeparator},
    {path_components_tab, &S::pathComponentsPrefix},
    {path_components_tab, &S::pathComponentsSuffix},
});

struct Requirement {
  std::int32_t tab;
  std::int32_t RenameSettings::*option;  // the text is needed when this option is `value`; always when null
  std::int32_t value;
  Text RenameSettings::*text;
  Refusal refusal;
};

constexpr Refusal insert_text{"INSERTINVALIDINPUT", "ENTERVALIDVALUE", "insertDeleteInsert"};
constexpr Refusal insert_before{"INSERTTEXTATBEFORETEXT", "ENTERSOMETEXT", "insertDeleteInsertAtBeforeText"};
constexpr Refusal insert_after{"INSERTTEXTATAFTERTEXT", "ENTERSOMETEXT", "insertDeleteInsertAtAfterText"};
constexpr Refusal replace_this{"REPLACEREMOVEINVALIDINPUT", "ENTERVALIDVALUE", "replaceRemoveThis"};
constexpr Refusal date_before{"DATETIMEATBEFORETEXTINVALIDINPUT", "ENTERSOMETEXT", "dateTimeAtBeforeText"};
constexpr Refusal date_after{"DATETIMEATAFTERTEXTINVALIDINPUT", "ENTERSOMETEXT", "dateTimeAtAfterText"};
constexpr Refusal remove_after{"GENERALINVALIDINPUT", "ENTERVALIDVALUE", "generalRemoveAfterString"};
constexpr Refusal remove_from{"GENERALINVALIDINPUT", "ENTERVALIDVALUE", "generalRemoveFromString"};
constexpr Refusal name_mask{"GENERALINVALIDINPUT", "ENTERVALIDVALUE", "generalFilenameMask"};
constexpr Refusal audio_mask{"ID3INVALIDINPUT", "INVALIDID3RENAMINGMASK", "id3RenamingMask"};
constexpr Refusal photo_mask{"PHOTOINVALIDINPUT", "INVALIDPHOTORENAMINGMASK", "photoRenamingMask"};
constexpr Refusal path_before{"PATHTEXTATBEFORETEXT", "ENTERSOMETEXT", "pathComponentsAtBeforeText"};
constexpr Refusal path_after{"PATHTEXTATAFTERTEXT", "ENTERSOMETEXT", "pathComponentsAtAfterText"};

// In the order of asking.
constexpr auto requirements = std::to_array<Requirement>({
    {insert_delete_tab, nullptr, 0, &S::insertDeleteInsert, insert_text},
    {insert_delete_tab, &S::insertDeleteInsertOptionIndex, 3, &S::insertDeleteInsertAtBeforeText, insert_before},
    {insert_delete_tab, &S::insertDeleteInsertOptionIndex, 4, &S::insertDeleteInsertAtAfterText, insert_after},
    {replace_remove_tab, nullptr, 0, &S::replaceRemoveThis, replace_this},
    {date_time_tab, &S::dateTimeOptionsIndex, 3, &S::dateTimeAtBeforeText, date_before},
    {date_time_tab, &S::dateTimeOptionsIndex, 4, &S::dateTimeAtAfterText, date_after},
    {general_tab, &S::generalOptionIndex, 8, &S::generalRemoveAfterString, remove_after},
    {general_tab, &S::generalOptionIndex, 9, &S::generalRemoveFromString, remove_from},
    {general_tab, &S::generalOptionIndex, 10, &S::generalFilenameMask, name_mask},
    {audio_tab, nullptr, 0, &S::id3RenamingMask, audio_mask},
    {photo_tab, nullptr, 0, &S::photoRenamingMask, photo_mask},
    {path_components_tab, &S::pathComponentsOptionsIndex, 3, &S::pathComponentsAtBeforeText, path_before},
    {path_components_tab, &S::pathComponentsOptionsIndex, 4, &S::pathComponentsAtAfterText, path_after},
});

void limit_steps(RenameSettings& settings) {
  for (Text RenameSettings::*const step : {&S::alphaNumericIncrementBy, &S::alphaNumericDecrementBy}) {
    const std::int32_t size = integer_of(settings.*step);
    if (settings.isAlphaNumericNumeric) {
      if (size < 1) settings.*step = u"1";
    } else if (settings.isAlphaNumericAlphabetic && size > 26) {
      settings.*step = u"26";
    }
  }
}

}  // namespace

void fill_absent_options(RenameSettings& settings, std::int32_t tab) {
  for (const AbsentDefault& option : absent_defaults) {
    if (option.tab == tab && !(settings.*option.text)) settings.*option.text = option.value;
  }
}

std::optional<Refusal> find_missing_text(const RenameSettings& settings, std::int32_t tab) {
  for (const Requirement& needed : requirements) {
    const bool asked = needed.tab == tab && (!needed.option || settings.*needed.option == needed.value);
    if (asked && is_blank(settings.*needed.text)) return needed.refusal;
  }
  return std::nullopt;
}

std::optional<Refusal> validate_and_normalise(RenameSettings& settings) {
  fill_absent_options(settings, settings.selectedTab);
  if (settings.selectedTab == sequence_tab) {
    limit_steps(settings);
    const bool lettered = settings.isAlphaNumericAlphabetic && !settings.isAlphaNumericNumeric;
    if (lettered && is_blank(settings.alphaNumericAlphabeticStartWith)) settings.alphaNumericAlphabeticStartWith = u"a";
  }
  if (settings.selectedTab == insert_delete_tab && !settings.isInsertDeleteInsert) return std::nullopt;
  return find_missing_text(settings, settings.selectedTab);
}

}  // namespace brindle
