#pragma once

// The whole state of the renaming window: which method is chosen, and every option of every method. One member a key,
// in the order in which a record is written; a member's name is its key, spelling included, since profile and rule
// files store it. What each key means stands in its row of settings_table.cpp, and `brindle settings` prints it.
//
// Plain data. An object belongs to one thread at a time; a job works on its own copy.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/date.h"
#include "settings/meta_data_field.h"
#include "text/number_text.h"

namespace brindle {

/// A text setting. Absent is a state of its own: it ends a written record (settings_record.h).
using Text = std::optional<std::u16string>;
using TextList = std::vector<std::u16string>;

struct RenameSettings {
  // All methods.

  std::int32_t selectedTab = 0;
  bool isFiles = true;
  bool isFolders = false;
  bool isIncludeSubFolders = true;

  // Number and letter sequences (tab 0).

  bool isAlphaNumericIncrement = true;
  bool isAlphaNumericDecrement = false;
  bool isAlphaNumericNumeric = true;
  bool isAlphaNumericAlphabetic = false;
  bool isAlphaNumericPrefix = false;
  bool isAlphaNumericSufix = false;
  bool isAlphaNumericSeperator = false;
  Text alphaNumericSeperator = u"";
  Text alphaNumericPaddingMask = u"";
  Text alphaNumericNumericStartWith = u"0";
  Text alphaNumericAlphabeticStartWith = u"a";
  Text alphaNumericIncrementBy = u"1";
  Text alphaNumericDecrementBy = u"1";
  bool isAlphaNumericResetSequenceOnEachFolder = false;

  // Insert and delete (tab 1).

  bool isInsertDeleteInsert = true;
  Text insertDeleteInsert = u"";
  std::int32_t insertDeleteInsertOptionIndex = 0;
  bool isInsertDeleteInsertAtBeginning = true;
  bool isInsertDeleteInsertAtEnd = false;
  bool isInsertDeleteInsertAtPosition = false;
  Text insertDeleteAtCharacterPositions = u"1";
  std::int32_t insertDeleteInsertAtPostionDirection = 0;
  bool isInsertDeleteInsertAtBeforeText = false;
  Text insertDeleteInsertAtBeforeText = u"";
  Text insertDeleteInsertAtBeforeOccurrence = u"1";
  bool isInsertDeleteInsertAtAfterText = false;
  Text insertDeleteInsertAtAfterText = u"";
  Text insertDeleteInsertAtAfterOccurrence = u"1";
  bool isInsertDeleteDelete = false;
  bool isInsertDeleteDeleteFromBackWard = false;
  Text insertDeleteFromCharacterPosition = u"1";
  Text insertDeleteNumberOfCharacters = u"1";

  // Replace and remove (tab 2).

  bool isReplaceRemoveReplace = true;
  bool isReplaceRemoveRemove = false;
  bool isReplaceRemoveRemoveCharacters = false;
  Text replaceRemoveThis = u"";
  Text replaceRemoveWith = u"";
  std::int32_t replaceRemoveRemoveType = 0;
  bool isReplaceRemoveCaseSensitive = false;
  bool isReplaceRemoveAllOccurrence = false;
  std::int32_t replaceRemovePositionDirection = 0;
  Text replaceRemoveStartFromCharacter = u"1";
  Text replaceRemoveStartOnOccurrence = u"1";
  Text replaceRemoveOccuranceCount = u"1";

  // Prefix and suffix (tab 3).

  bool isPrefixSuffixString = true;
  bool isPrefixSuffixDate = false;
  bool isPrefixSuffixDatePrefix = false;
  bool isPrefixSuffixDateSuffix = false;
  std::int32_t prefixSuffixFileDateAttribute = 1;
  Text prefixSuffixPrefix = u"";
  Text prefixSuffixSuffix = u"";
  Text prefixSuffixDatePart1 = u"dd";
  Text prefixSuffixDateSeperator1 = u"";
  Text prefixSuffixDatePart2 = u"MM";
  Text prefixSuffixDateSeperator2 = u"";
  Text prefixSuffixDatePart3 = u"yyyy";
  Text prefixSuffixTimePart1 = u"HH";
  Text prefixSuffixTimeSeperator1 = u"";
  Text prefixSuffixTimePart2 = u"mm";
  Text prefixSuffixTimeSeperator2 = u"";
  Text prefixSuffixTimePart3 = u"ss";
  Text prefixSuffixDatePrefix = u"";
  Text prefixSuffixDateSuffix = u"";

  // Date and time (tab 4).

  std::int32_t dateTimeDateOptionIndex = 0;
  bool hasDateTimeCustomDate = false;
  Date dateTimeCustomDate{};
  std::int32_t dateTimeOptionsIndex = 0;
  bool isDateTimeAtBeginning = true;
  bool isDateTimeAtEnd = false;
  bool isDateTimeAtPosition = false;
  bool isDateTimeAtBeforeText = false;
  bool isDateTimeAtAfterText = false;
  Text dateTimeAtPositionNo = u"1";
  std::int32_t dateTimeAtPositionDirection = 0;
  Text dateTimeAtBeforeText = u"";
  Text dateTimeAtBeforeTextOccurrence = u"1";
  Text dateTimeAtAfterText = u"";
  Text dateTimeAtAfterTextOccurrence = u"1";
  bool hasDateFormat = true;
  bool hasTimeFormat = true;
  Text dateTimeFormatDatePart1 = u"dd";
  Text dateTimeFormatDateSeperator1 = u"";
  Text dateTimeFormatDatePart2 = u"MM";
  Text dateTimeFormatDateSeperator2 = u"";
  Text dateTimeFormatDatePart3 = u"yyyy";
  Text dateTimeFormatTimePart1 = u"HH";
  Text dateTimeFormatTimeSeperator1 = u"";
  Text dateTimeFormatTimePart2 = u"mm";
  Text dateTimeFormatTimeSeperator2 = u"";
  Text dateTimeFormatTimePart3 = u"ss";
  bool isDateTimeColonReplace = false;
  Text dateTimeColonReplace = u"";
  Text dateTimeSeparator = u"";
  Text dateTimePrefix = u"";
  Text dateTimeSuffix = u"";

  // General transformations (tab 5).

  std::int32_t generalOptionIndex = 0;
  std::int32_t generalFileNameCase = 1;
  std::int32_t generalExtensionCase = 1;
  bool isGeneralConvertFilenameCase = true;
  bool isGeneralConvertExtension = false;
  bool isGeneralRemoveExtension = false;
  bool isGeneralChangeExtension = false;
  bool isGeneralReverseFileName = false;
  bool isGeneralRemoveSpaces = false;
  bool isGeneralSwapFromSeperator = false;
  bool isGeneralSwapFromPostion = false;
  bool isGeneralRemoveAfterString = false;
  bool isGeneralRemoveFromString = false;
  bool isGeneralConvertWindowsCompatible = false;
  bool isGeneralFilenameMask = false;
  Text generalChangeExtension = u"";
  Text generalSwapSeperator = u"";
  Text generalSwapPosition = u"1";
  Text generalRemoveAfterString = u"";
  Text generalRemoveFromString = u"";
  Text generalRemoveAfterStringOccurrence = u"1";
  Text generalRemoveFromStringOccurrence = u"1";
  Text generalConvertWindowsCompatibleString = u"";
  Text generalFilenameMask = u"";

  // Photo metadata (tab 7).

  bool isPhotoRenamingSeperator = false;
  bool isPhotoRenamingColonReplace = false;
  Text photoRenamingSeperator = u"";
  Text photoRenamingColonReplace = u"";
  Text photoRenamingMask = u"";
  Text photoDatePart1 = u"dd";
  Text photoDateSeperator1 = u"";
  Text photoDatePart2 = u"MM";
  Text photoDateSeperator2 = u"";
  Text photoDatePart3 = u"yyyy";
  Text photoTimePart1 = u"HH";
  Text photoTimeSeperator1 = u"";
  Text photoTimePart2 = u"mm";
  Text photoTimeSeperator2 = u"";
  Text photoTimePart3 = u"ss";
  Text photoPaddingMask = u"";
  FieldList photoMetaDataList;
  TextList photoExtensions = {u".JPG", u".JPEG", u".EXIF", u".TIF", u".TIFF"};
  bool isPhotoResetSequenceOnEachFolder = false;

  // Audio tags (tab 6).

  bool isID3RenamingSeperator = false;
  bool isID3RenamingColonReplace = false;
  Text id3RenamingSeperator = u"";
  Text id3RenamingColonReplace = u"";
  Text id3RenamingMask = u"";
  FieldList id3RenamingTagsList;
  TextList id3Extensions = {u".MP3", u".M4A", u".AAC", u".M4B"};

  // Path components (tab 8).

  bool isPathComponentsAtBeginning = true;
  bool isPathComponentsAtEnd = false;
  bool isPathComponentsAtPosition = false;
  bool isPathComponentsAtBeforeText = false;
  bool isPathComponentsAtAfterText = false;
  std::int32_t pathComponentsLevelNo = 1;
  std::int32_t pathComponentsOptionsIndex = 0;
  Text pathComponentsAtPositionNo = u"1";
  std::int32_t pathComponentsAtPositionDirection = 0;
  Text pathComponentsAtBeforeText = u"";
  Text pathComponentsAtBeforeOccurrence = u"1";
  Text pathComponentsAtAfterText = u"";
  Text pathComponentsAtAfterOccurrence = u"1";
  Text pathComponentsSeparator = u"";
  Text pathComponentsPrefix = u"";
  Text pathComponentsSuffix = u"";

  // Positions of the window's choices, and the list file of tab 9.

  std::int32_t fileFolderIndex = 0;
  std::int32_t alphaNumericIncrementDecrementIndex = 0;
  std::int32_t alphaNumericNumericAlphabeticIndex = 0;
  std::int32_t insertDeleteIndex = 0;
  std::int32_t removeReplaceIndex = 0;
  std::int32_t prefixSuffixIndex = 0;
  std::int32_t generalOptionsIndex = 0;
  Text renameFile;

  bool operator==(const RenameSettings&) const = default;
};

/// The tabs by the number in `selectedTab`.
enum Tab : std::int32_t {
  sequence_tab,
  insert_delete_tab,
  replace_remove_tab,
  prefix_suffix_tab,
  date_time_tab,
  general_tab,
  audio_tab,
  photo_tab,
  path_components_tab,
  rename_from_list_tab,
};

/// The integer value of a text setting; 0 when absent.
inline std::int32_t integer_of(const Text& text) {
  return text ? integer_value(*text) : 0;
}

inline bool is_blank(const Text& text) {
  return !text || text->empty();
}

/// Sets every member to its default, and `dateTimeCustomDate` to `now`. Saving and forgetting the open profile is the
/// caller's.
void loadEmptyProfile(RenameSettings& settings, Date now);

// A mask as one text follows from its list: the tokens in order, with the separator between them when it is switched
// on. Both return whether the mask holds anything.

bool resetPhotoMask(RenameSettings& settings);
/// Here the separator stands only after one of the eight audio tokens, never after a text of the user's own.
bool resetID3Mask(RenameSettings& settings);

}  // namespace brindle
