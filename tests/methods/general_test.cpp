#include "methods/general.h"

#include "methods/path_components.h"
#include "methods/sample_item.h"

namespace brindle::test {
namespace {

TEST(General, DoesAsTheTableSays) {
  for_each_case("general", [](const Case& c) {
    RenameSettings settings;
    settings.generalOptionIndex = c.number("option", 0);
    settings.generalFileNameCase = settings.generalExtensionCase = c.number("case", 0);
    settings.generalSwapPosition = settings.generalRemoveAfterStringOccurrence =
        settings.generalRemoveFromStringOccurrence = typed(c.number("n", 1));
    for (const auto text :
         {&RenameSettings::generalChangeExtension, &RenameSettings::generalSwapSeperator,
          &RenameSettings::generalRemoveAfterString, &RenameSettings::generalRemoveFromString,
          &RenameSettings::generalConvertWindowsCompatibleString, &RenameSettings::generalFilenameMask}) {
      settings.*text = c["text"];
    }
    expect_case(c, GeneralParameters(settings));
  });
}

TEST(PathComponents, DoAsTheTableSays) {
  for_each_case("path_components", [](const Case& c) {
    RenameSettings settings;
    settings.pathComponentsLevelNo = c.number("level", 1);
    settings.pathComponentsSeparator = c["separator"];
    settings.pathComponentsPrefix = c["prefix"];
    settings.pathComponentsSuffix = c["suffix"];
    fill_place(c, settings, path_placement);
    expect_case(c, PathComponentsParameters(settings));
  });
}

}  // namespace
}  // namespace brindle::test
