#include <array>

#include "methods/rename_plan.h"

// From settings to operations: which operation a tab runs, and where each of its arguments comes from.

namespace brindle {
namespace {

std::u16string_view text(const Text& text) {
  return text ? std::u16string_view(*text) : std::u16string_view();
}
std::int32_t number(const Text& value) {
  return integer_value(text(value));
}

RenameStep insert_delete_step(const RenameSettings& s, Date) {
  if (s.isInsertDeleteInsert) {
    return InsertParameters(InsertArguments{
        .insertText = text(s.insertDeleteInsert),
        .insertOptionIndex = s.insertDeleteInsertOptionIndex,
        .atCharacterPositions = number(s.insertDeleteAtCharacterPositions),
        .atPostionDirection = s.insertDeleteInsertAtPostionDirection,
        .atBeforeText = text(s.insertDeleteInsertAtBeforeText),
        .atBeforeOccurrence = number(s.insertDeleteInsertAtBeforeOccurrence),
        .atAfterText = text(s.insertDeleteInsertAtAfterText),
        .atAfterOccurrence = number(s.insertDeleteInsertAtAfterOccurrence),
    });
  }
  if (!s.isInsertDeleteDelete) return {};
  return DeleteParameters{
      .deleteFromBackward = s.isInsertDeleteDeleteFromBackWard,
      .fromCharacterPosition = number(s.insertDeleteFromCharacterPosition),
      .numberOfCharacters = number(s.insertDeleteNumberOfCharacters),
  };
}

RenameStep sequence_step(const RenameSettings& s, Date) {
  const SequenceArguments arguments{
      .increment = s.isAlphaNumericIncrement,
      .decrement = s.isAlphaNumericDecrement,
      .prefix = s.isAlphaNumericPrefix,
      .subffix = s.isAlphaNumericSufix,
      .seperator = s.isAlphaNumericSeperator,
      .seperatorString = text(s.alphaNumericSeperator),
      .addingMask = text(s.alphaNumericPaddingMask),
      .incrementBy = number(s.alphaNumericIncrementBy),
      .decrementBy = number(s.alphaNumericDecrementBy),
  };
  if (s.isAlphaNumericNumeric) return NumericParameters(arguments);
  if (s.isAlphaNumericAlphabetic) return AlphabeticParameters(arguments);
  return {};
}

RenameStep replace_remove_step(const RenameSettings& s, Date) {
  const bool removes = s.isReplaceRemoveRemove || s.isReplaceRemoveRemoveCharacters;
  if (!s.isReplaceRemoveReplace && !removes) return {};
  // A removal by characters counts its occurrences even when all are asked for.
  const bool all = s.isReplaceRemoveAllOccurrence && (s.isReplaceRemoveReplace || s.isReplaceRemoveRemove);
  return ReplaceRemoveParameters(ReplaceRemoveArguments{
      .replaceThis = text(s.replaceRemoveThis),
      .replaceWith = s.isReplaceRemoveReplace ? text(s.replaceRemoveWith) : std::u16string_view(),
      .caseSensitive = s.isReplaceRemoveCaseSensitive,
      .removeCharacters = !s.isReplaceRemoveReplace && s.isReplaceRemoveRemoveCharacters,
      .startFromCharacter = number(s.replaceRemoveStartFromCharacter),
      .startOnOccurrence = all ? 1 : number(s.replaceRemoveStartOnOccurrence),
      .occurrenceCount = all ? -1 : number(s.replaceRemoveOccuranceCount),
      .replaceRemovePositionDirection = s.replaceRemovePositionDirection,
      .replaceRemoveRemoveType = s.replaceRemoveRemoveType,
  });
}

RenameStep prefix_suffix_step(const RenameSettings& s, Date now) {
  return PrefixSuffixParameters(PrefixSuffixArguments{
      .prefix = text(s.prefixSuffixPrefix),
      .suffix = text(s.prefixSuffixSuffix),
      .isString = s.isPrefixSuffixString,
      .fileDateAttribute = s.prefixSuffixFileDateAttribute,
      .isDatePrefix = s.isPrefixSuffixDatePrefix,
      .isDateSuffix = s.isPrefixSuffixDateSuffix,
      .parts = {text(s.prefixSuffixDatePart1), text(s.prefixSuffixDateSeperator1), text(s.prefixSuffixDatePart2),
                text(s.prefixSuffixDateSeperator2), text(s.prefixSuffixDatePart3), text(s.prefixSuffixTimePart1),
                text(s.prefixSuffixTimeSeperator1), text(s.prefixSuffixTimePart2), text(s.prefixSuffixTimeSeperator2),
                text(s.prefixSuffixTimePart3)},
      .datePrefix = text(s.prefixSuffixDatePrefix),
      .dateSuffix = text(s.prefixSuffixDateSuffix),
      .now = now,
  });
}

RenameStep date_time_step(const RenameSettings& s, Date) {
  return DateTimeParameters(DateTimeArguments{
      .dateTimeDateOptionIndex = s.dateTimeDateOptionIndex,
      .dateTimeCustomDate = s.dateTimeCustomDate,
      .dateTimeOptionsIndex = s.dateTimeOptionsIndex,
      .dateTimeAtPositionNo = number(s.dateTimeAtPositionNo),
      .dateTimeAtPositionDirection = s.dateTimeAtPositionDirection,
      .dateTimeAtBeforeText = text(s.dateTimeAtBeforeText),
      .dateTimeAtBeforeTextOccurrence = number(s.dateTimeAtBeforeTextOccurrence),
      .dateTimeAtAfterText = text(s.dateTimeAtAfterText),
      .dateTimeAtAfterTextOccurrence = number(s.dateTimeAtAfterTextOccurrence),
      .hasDateFormat = s.hasDateFormat,
      .hasTimeFormat = s.hasTimeFormat,
      .parts = {text(s.dateTimeFormatDatePart1), text(s.dateTimeFormatDateSeperator1), text(s.dateTimeFormatDatePart2),
                text(s.dateTimeFormatDateSeperator2), text(s.dateTimeFormatDatePart3), text(s.dateTimeFormatTimePart1),
                text(s.dateTimeFormatTimeSeperator1), text(s.dateTimeFormatTimePart2),
                text(s.dateTimeFormatTimeSeperator2), text(s.dateTimeFormatTimePart3)},
      .isDateTimeColonReplace = s.isDateTimeColonReplace,
      .dateTimeColonReplace = text(s.dateTimeColonReplace),
      .dateTimeSeparator = text(s.dateTimeSeparator),
      .dateTimePrefix = text(s.dateTimePrefix),
      .dateTimeSuffix = text(s.dateTimeSuffix),
  });
}

RenameStep general_step(const RenameSettings& s, Date) {
  return GeneralParameters(GeneralArguments{
      .generalOptionIndex = s.generalOptionIndex,
      .generalFileNameCase = s.generalFileNameCase,
      .generalExtensionCase = s.generalExtensionCase,
      .generalChangeExtension = text(s.generalChangeExtension),
      .generalSwapSeperator = text(s.generalSwapSeperator),
      .generalSwapPosition = number(s.generalSwapPosition),
      .generalRemoveAfterString = text(s.generalRemoveAfterString),
      .generalRemoveFromString = text(s.generalRemoveFromString),
      .generalRemoveAfterStringOccurrence = number(s.generalRemoveAfterStringOccurrence),
      .generalRemoveFromStringOccurrence = number(s.generalRemoveFromStringOccurrence),
      .generalConvertWindowsCompatibleString = text(s.generalConvertWindowsCompatibleString),
      .generalFilenameMask = text(s.generalFilenameMask),
  });
}

RenameStep path_components_step(const RenameSettings& s, Date) {
  return PathComponentsParameters(PathComponentsArguments{
      .pathComponentsLevelNo = s.pathComponentsLevelNo,
      .pathComponentsOptionsIndex = s.pathComponentsOptionsIndex,
      .pathComponentsAtPositionNo = number(s.pathComponentsAtPositionNo),
      .pathComponentsAtPositionDirection = s.pathComponentsAtPositionDirection,
      .pathComponentsAtBeforeText = text(s.pathComponentsAtBeforeText),
      .pathComponentsAtBeforeOccurrence = number(s.pathComponentsAtBeforeOccurrence),
      .pathComponentsAtAfterText = text(s.pathComponentsAtAfterText),
      .pathComponentsAtAfterOccurrence = number(s.pathComponentsAtAfterOccurrence),
      .pathComponentsSeparator = text(s.pathComponentsSeparator),
      .pathComponentsPrefix = text(s.pathComponentsPrefix),
      .pathComponentsSuffix = text(s.pathComponentsSuffix),
  });
}

RenameStep audio_step(const RenameSettings& s, Date) {
  const std::vector<std::u16string> tags = MetaDataField::getTagsList(s.id3RenamingTagsList);
  return AudioParameters(AudioArguments{
      .id3RenamingMask = text(s.id3RenamingMask),
      .isID3RenamingSeperator = s.isID3RenamingSeperator,
      .id3RenamingSeperator = text(s.id3RenamingSeperator),
      .isID3RenamingColonReplace = s.isID3RenamingColonReplace,
      .id3RenamingColonReplace = text(s.id3RenamingColonReplace),
      .tags = tags,
      .allowedExtensions = s.id3Extensions,
  });
}

RenameStep photo_step(const RenameSettings& s, Date) {
  const std::vector<std::u16string> tags = MetaDataField::getTagsList(s.photoMetaDataList);
  return PhotoParameters(PhotoArguments{
      .photoRenamingMask = text(s.photoRenamingMask),
      .isPhotoRenamingSeperator = s.isPhotoRenamingSeperator,
      .photoRenamingSeperator = text(s.photoRenamingSeperator),
      .isPhotoRenamingColonReplace = s.isPhotoRenamingColonReplace,
      .photoRenamingColonReplace = text(s.photoRenamingColonReplace),
      .parts = {text(s.photoDatePart1), text(s.photoDateSeperator1), text(s.photoDatePart2),
                text(s.photoDateSeperator2), text(s.photoDatePart3), text(s.photoTimePart1),
                text(s.photoTimeSeperator1), text(s.photoTimePart2), text(s.photoTimeSeperator2),
                text(s.photoTimePart3)},
      .photoPaddingMask = text(s.photoPaddingMask),
      .tags = tags,
      .allowedExtensions = s.photoExtensions,
  });
}

RenameStep no_step(const RenameSettings&, Date) {
  return {};
}

using StepMaker = RenameStep (*)(const RenameSettings&, Date);

// By selectedTab. The list tab has no operation.
constexpr std::array<StepMaker, 10> step_makers = {
    sequence_step, insert_delete_step, replace_remove_step, prefix_suffix_step,   date_time_step,
    general_step,  audio_step,         photo_step,          path_components_step, no_step,
};

}  // namespace

RenameStep make_step(const RenameSettings& settings, Date now) {
  const auto tab = static_cast<std::uint32_t>(settings.selectedTab);
  return tab < step_makers.size() ? step_makers[tab](settings, now) : RenameStep();
}

}  // namespace brindle
