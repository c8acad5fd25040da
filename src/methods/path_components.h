#pragma once

// Path components: the names of the folders that hold an item, put into the base of its name.

#include <cstdint>
#include <string>
#include <string_view>

#include "methods/placement.h"

namespace brindle {

inline constexpr PlacementMembers path_placement = {
    &RenameSettings::pathComponentsOptionsIndex,
    {&RenameSettings::isPathComponentsAtBeginning, &RenameSettings::isPathComponentsAtEnd,
     &RenameSettings::isPathComponentsAtPosition, &RenameSettings::isPathComponentsAtBeforeText,
     &RenameSettings::isPathComponentsAtAfterText},
    &RenameSettings::pathComponentsAtPositionNo,
    &RenameSettings::pathComponentsAtPositionDirection,
    &RenameSettings::pathComponentsAtBeforeText,
    &RenameSettings::pathComponentsAtBeforeOccurrence,
    &RenameSettings::pathComponentsAtAfterText,
    &RenameSettings::pathComponentsAtAfterOccurrence,
};

class PathComponentsParameters final : public RenameStep {
 public:
  explicit PathComponentsParameters(const RenameSettings& settings);
  NameOutcome make_name(StepRun& run) const override;

  const Placement& placement() const { return placement_; }

  /// Replaces `text` by the prefix, the innermost names of `folder` (an absolute path), outermost first, and the
  /// suffix.
  void write_text(std::u16string_view folder, std::u16string& text) const;

 private:
  Placement placement_;
  std::uint64_t levels_;  // from the innermost outwards; more than there are: all of them, the root never
  std::u16string separator_;
  std::u16string prefix_;  // also when there are no folders
  std::u16string suffix_;
};

NameOutcome renameByPathComponents(const PathComponentsParameters& parameters, std::u16string_view folder,
                                   WorkingName& name);

extern const MethodRow path_components_method;

}  // namespace brindle
