#include "methods/general.h"

#include "methods/path_components.h"
#include "methods/sample_item.h"

namespace brindle::test {
namespace {

TEST(General, DoesAsTheTableSays) {
  for_each_case("general", [](const Case& c) {
    const GeneralParameters parameters({.generalOptionIndex = c.number("option", 0),
                                        .generalFileNameCase = c.number("case", 0),
                                        .generalExtensionCase = c.number("case", 0),
                                        .generalChangeExtension = c["text"],
                                        .generalSwapSeperator = c["text"],
                                        .generalSwapPosition = c.number("n", 1),
                                        .generalRemoveAfterString = c["text"],
                                        .generalRemoveFromString = c["text"],
                                        .generalRemoveAfterStringOccurrence = c.number("n", 1),
                                        .generalRemoveFromStringOccurrence = c.number("n", 1),
                                        .generalConvertWindowsCompatibleString = c["text"],
                                        .generalFilenameMask = c["text"]});
    expect_case(c, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
      return renameByGeneral(item, parameters, name, error);
    });
  });
}

TEST(PathComponents, DoAsTheTableSays) {
  for_each_case("path_components", [](const Case& c) {
    const PathComponentsParameters parameters({.pathComponentsLevelNo = c.number("level", 1),
                                               .pathComponentsOptionsIndex = c.number("option", 0),
                                               .pathComponentsAtPositionNo = c.number("position", 1),
                                               .pathComponentsAtPositionDirection = c.number("direction", 0),
                                               .pathComponentsAtBeforeText = c["before"],
                                               .pathComponentsAtBeforeOccurrence = c.number("occurrence", 1),
                                               .pathComponentsAtAfterText = c["after"],
                                               .pathComponentsAtAfterOccurrence = c.number("occurrence", 1),
                                               .pathComponentsSeparator = c["separator"],
                                               .pathComponentsPrefix = c["prefix"],
                                               .pathComponentsSuffix = c["suffix"]});
    expect_case(c, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
      return renameByPathComponents(item, parameters, name, error);
    });
  });
}

}  // namespace
}  // namespace brindle::test
