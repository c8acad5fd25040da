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
    {0, &S::alphaNumericPaddingMask},
    {0, &S::alphaNumericSeperator},
    {2, &S::replaceRemoveWith},
    {3, &S::prefixSuffixPrefix},
    {3, &S::prefixSuffixSuffix},
    {3, &S::prefixSuffixDateSeperator1},
    {3, &S::prefixSuffixDateSeperator2},
    {3, &S::prefixSuffixTimeSeperator1},
    {3, &S::prefixSuffixTimeSeperator2},
    {3, &S::prefixSuffixDatePrefix},
    {3, &S::prefixSuffixDateSuffix},
    {4, &S::dateTimeFormatDatePart1},
    {4, &S::dateTimeFormatDateSeperator1},
    {4, &S::dateTimeFormatDatePart2},
    {4, &S::dateTimeFormatDateSeperator2},
    {4, &S::dateTimeFormatDatePart3},
    {4, &S::dateTimeFormatTimePart1},
    {4, &S::dateTimeFormatTimeSeperator1},
    {4, &S::dateTimeFormatTimePart2},
    {4, &S::dateTimeFormatTimeSeperator2},
    {4, &S::dateTimeFormatTimePart3},
    {4, &S::dateTimeColonReplace},
    {4, &S::dateTimeSeparator},
    {4, &S::dateTimePrefix},
    {4, &S::dateTimeSuffix},
    {5, &S::generalChangeExtension},
    {5, &S::generalSwapSeperator},
    {5, &S::generalRemoveAfterString},
    {5, &S::generalRemoveFromString},
    {5, &S::generalConvertWindowsCompatibleString},
    {5, &S::generalFilenameMask},
    {5, &S::generalSwapPosition, u"1"},
    {5, &S::generalRemoveAfterStringOccurrence, u"1"},
    {5, &S::generalRemoveFromStringOccurrence, u"1"},
    {6, &S::id3RenamingSeperator},
    {6, &S::id3RenamingColonReplace},
    {7, &S::photoRenamingSeperator},
    {7, &S::photoRenamingColonReplace},
    {7, &S::photoDateSeperator1},
    {7, &S::photoDateSeperator2},
    {7, &S::photoTimeSeperator1},
    {7, &S::photoTimeSeperator2},
    {7, &S::photoPaddingMask},
    {8, &S::pathComponentsSeparator},
    {8, &S::pathComponentsPrefix},
    {8, &S::pathComponentsSuffix},
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
    {1, nullptr, 0, &S::insertDeleteInsert, insert_text},
    {1, &S::insertDeleteInsertOptionIndex, 3, &S::insertDeleteInsertAtBeforeText, insert_before},
    {1, &S::insertDeleteInsertOptionIndex, 4, &S::insertDeleteInsertAtAfterText, insert_after},
    {2, nullptr, 0, &S::replaceRemoveThis, replace_this},
    {4, &S::dateTimeOptionsIndex, 3, &S::dateTimeAtBeforeText, date_before},
    {4, &S::dateTimeOptionsIndex, 4, &S::dateTimeAtAfterText, date_after},
    {5, &S::generalOptionIndex, 8, &S::generalRemoveAfterString, remove_after},
    {5, &S::generalOptionIndex, 9, &S::generalRemoveFromString, remove_from},
    {5, &S::generalOptionIndex, 10, &S::generalFilenameMask, name_mask},
    {6, nullptr, 0, &S::id3RenamingMask, audio_mask},
    {7, nullptr, 0, &S::photoRenamingMask, photo_mask},
    {8, &S::pathComponentsOptionsIndex, 3, &S::pathComponentsAtBeforeText, path_before},
    {8, &S::pathComponentsOptionsIndex, 4, &S::pathComponentsAtAfterText, path_after},
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
  if (settings.selectedTab == 0) {
    limit_steps(settings);
    const bool lettered = settings.isAlphaNumericAlphabetic && !settings.isAlphaNumericNumeric;
    if (lettered && is_blank(settings.alphaNumericAlphabeticStartWith)) settings.alphaNumericAlphabeticStartWith = u"a";
  }
  if (settings.selectedTab == 1 && !settings.isInsertDeleteInsert) return std::nullopt;
  return find_missing_text(settings, settings.selectedTab);
}

}  // namespace brindle
