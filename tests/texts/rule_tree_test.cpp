#include "texts/rule_tree.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "settings/setting_text.h"

namespace brindle {
namespace {

// "OPTION: VALUE" of each row.
std::string shown(const RuleNode& node) {
  std::string text = node.option();
  for (const RuleNode& row : node.children()) text += "\n" + row.option() + ": " + row.value();
  return text;
}

struct RuleTreeCase {
  std::vector<std::string_view> settings;
  std::string_view shown;
};

// What is not meant by the options chosen must not be shown, and all else must.
const RuleTreeCase rule_tree_cases[] = {
    {{"selectedTab=0", "isAlphaNumericPrefix=1", "alphaNumericPaddingMask=000"},
     "Numeric\nStart With: 0\nIncrement by: 1\nAdd as Prefix: TRUE\nAdd as Suffix: FALSE\nPadding Mask: 000\n"
     "Reset Sequence On Each Folder: FALSE"},
    {{"selectedTab=0", "isAlphaNumericNumeric=0", "isAlphaNumericAlphabetic=1", "isAlphaNumericDecrement=1",
      "isAlphaNumericSeperator=1", "alphaNumericSeperator=-", "alphaNumericAlphabeticStartWith=q"},
     "Alphabetic\nStart With: q\nDecrement by: 1\nAdd as Prefix: FALSE\nAdd as Suffix: FALSE\nSeparator: -\n"
     "Reset Sequence On Each Folder: FALSE"},
    {{"selectedTab=1", "insertDeleteInsert=é x", "insertDeleteInsertOptionIndex=2",
      "insertDeleteInsertAtPostionDirection=1"},
     "Insert\nInsert At Position: é x\nAt Character Positions: 1\nInsert From: END"},
    {{"selectedTab=1", "insertDeleteInsert=x", "insertDeleteInsertOptionIndex=4", "insertDeleteInsertAtAfterText=b"},
     "Insert\nInsert At After Text: x\nText To Search: b\nOn Occurrence: 1"},
    {{"selectedTab=1", "isInsertDeleteInsert=0", "isInsertDeleteDelete=1", "insertDeleteNumberOfCharacters=3"},
     "Delete\nDelete From Backward: FALSE\nFrom Character Position: 1\nNumber of Characters: 3"},
    {{"selectedTab=2", "replaceRemoveThis=a", "isReplaceRemoveAllOccurrence=1"},
     "Replace\nTHIS: a\nWITH: \nCase Sensitive: FALSE\nStart From: Beginning of the filename\nAll Occurrence: TRUE\n"
     "Start From Character: 1"},
    {{"selectedTab=2", "replaceRemoveThis=a", "isReplaceRemoveReplace=0", "isReplaceRemoveRemove=1",
      "replaceRemovePositionDirection=1"},
     "Remove\nTHIS: a\nCase Sensitive: FALSE\nStart From: End of the filename\nAll Occurrence: FALSE\n"
     "Start From Character: 1\nStart On Occurrence: 1\nOccurrence Count: 1"},
    {{"selectedTab=2", "replaceRemoveThis=ab", "isReplaceRemoveReplace=0", "isReplaceRemoveRemoveCharacters=1",
      "isReplaceRemoveAllOccurrence=1", "replaceRemoveRemoveType=1"},
     "Remove Characters\nTHIS: ab\nRemove Type: Between occurrences\nCase Sensitive: FALSE\n"
     "Start From: Beginning of the filename\nStart From Character: 1\nStart On Occurrence: 1\nOccurrence Count: 1"},
    {{"selectedTab=3", "prefixSuffixSuffix=_z"}, "As String\nSUFFIX: _z"},
    {{"selectedTab=3", "isPrefixSuffixString=0", "isPrefixSuffixDate=1", "isPrefixSuffixDateSuffix=1",
      "prefixSuffixFileDateAttribute=2", "prefixSuffixDatePart2=None", "prefixSuffixDateSeperator1=-",
      "prefixSuffixDatePrefix=("},
     "As Date\nFile Date Attributes: Date Modified\nDateAndTime Format: dd-yyyy HHmmss\nAdd as Prefix: FALSE\n"
     "Add as Suffix: TRUE\nPREFIX: ("},
    {{"selectedTab=4", "dateTimeDateOptionIndex=2", "dateTimeCustomDate=2026-11-21T22:05:09", "hasTimeFormat=0",
      "dateTimeSeparator=_", "isDateTimeColonReplace=1", "dateTimeColonReplace=."},
     "Date and Time\nDate Source: Custom Date\nDATE: 21/11/2026 10:05:09 PM\nDate Format: ddMMyyyy\n"
     "Replace colon[:] with character(s): .\nInsert At Beginning: TRUE"},
    {{"selectedTab=4", "hasDateFormat=0", "hasTimeFormat=0", "dateTimeOptionsIndex=3", "dateTimeAtBeforeText=b"},
     "Date and Time\nFile Date Attributes: Date Created\nDateAndTime Format: dd/MM/yyyy hh:mm:ss a\n"
     "Insert At Before Text: TRUE\nText To Search: b\nOn Occurrence: 1"},
    {{"selectedTab=5", "generalFileNameCase=3"}, "General\nConvert Filename to: Proper Case"},
    {{"selectedTab=5", "generalOptionIndex=9", "generalRemoveFromString=("},
     "General\nRemove All Characters From: (\nOn Occurrence: 1"},
    {{"selectedTab=5", "generalOptionIndex=11", "generalConvertWindowsCompatibleString=_"},
     "General\nConvert Filename To Windows Compatible: TRUE\nReplace With: _"},
    {{"selectedTab=6", "id3RenamingTagsList=<Artist>;< - >", "isID3RenamingSeperator=1", "id3RenamingSeperator=_",
      "id3Extensions=mp3;ogg"},
     "Tags\nRenaming Mask: <Artist>_< - >\nSeparator: _\nAllowed Extensions: .MP3; .OGG"},
    {{"selectedTab=7", "photoMetaDataList=<EXIF_Date>", "photoTimePart1=None", "photoTimePart2=None",
      "photoTimePart3=None", "photoPaddingMask=00", "photoExtensions=jpg"},
     "Fields\nRenaming Mask: <EXIF_Date>\nDate Format: ddMMyyyy\nTime Format: hh mm ss a\nSequence Padding Mask: 00\n"
     "Reset Sequence On Each Folder: FALSE\nAllowed Extensions: .JPG"},
    {{"selectedTab=8", "pathComponentsLevelNo=2", "pathComponentsSeparator=_", "pathComponentsOptionsIndex=1"},
     "Folders\nParent folders level: 2\nSeparator: _\nInsert At End: TRUE"},
};

TEST(RuleTree, ShowsEachVariantsMeaningfulSettings) {
  for (const RuleTreeCase& each : rule_tree_cases) {
    RenameSettings settings;
    ASSERT_EQ(apply_assignments(settings, each.settings).value_or(""), "");
    const NewRule made = getRule(settings);
    ASSERT_TRUE(std::holds_alternative<Rule>(made)) << each.shown;
    EXPECT_EQ(shown(RuleNode(std::get<Rule>(made))), each.shown);
  }
}

TEST(RuleTree, ARuleOfAnUnknownMethodHasNoRows) {
  Rule rule;
  rule.rule = u"Rule - General";
  rule.type = u"General";
  const std::vector<RuleNode> nodes = rule_nodes(std::vector<Rule>{rule});
  ASSERT_EQ(nodes.size(), 1U);
  EXPECT_EQ(nodes[0].value(), "Rule - General");
  EXPECT_EQ(nodes[0].numberOfChildren(), 0U);
}

}  // namespace
}  // namespace brindle
