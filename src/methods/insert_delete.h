#pragma once

// Insert puts a text into the base of each name; Delete cuts a run of units out of it. Odd options leave the name as it
// is.

#include <cstdint>
#include <string>

#include "methods/placement.h"

namespace brindle {

inline constexpr PlacementMembers insert_placement = {
    &RenameSettings::insertDeleteInsertOptionIndex,
    {&RenameSettings::isInsertDeleteInsertAtBeginning, &RenameSettings::isInsertDeleteInsertAtEnd,
     &RenameSettings::isInsertDeleteInsertAtPosition, &RenameSettings::isInsertDeleteInsertAtBeforeText,
     &RenameSettings::isInsertDeleteInsertAtAfterText},
    &RenameSettings::insertDeleteAtCharacterPositions,
    &RenameSettings::insertDeleteInsertAtPostionDirection,
    &RenameSettings::insertDeleteInsertAtBeforeText,
    &RenameSettings::insertDeleteInsertAtBeforeOccurrence,
    &RenameSettings::insertDeleteInsertAtAfterText,
    &RenameSettings::insertDeleteInsertAtAfterOccurrence,
};

class InsertParameters final : public RenameStep {
 public:
  explicit InsertParameters(const RenameSettings& settings);
  NameOutcome make_name(StepRun& run) const override;

  const std::u16string& text() const { return text_; }
  const Placement& placement() const { return placement_; }

 private:
  std::u16string text_;  // "/" is ":"
  Placement placement_;
};

/// An option index other than 0 to 4 makes no name at all.
NameOutcome renameByInsert(const InsertParameters& parameters, WorkingName& name);

struct DeleteParameters final : RenameStep {
  explicit DeleteParameters(const RenameSettings& settings);
  NameOutcome make_name(StepRun& run) const override;

  bool backward;       ///< positions count from the end
  std::int32_t first;  ///< 1-based; negative or past the end: nothing is cut; 0: one unit less is cut
  std::int32_t count;  ///< units to cut; less than 1: none
};

NameOutcome renameByDelete(const DeleteParameters& parameters, WorkingName& name);

extern const MethodRow insert_delete_method;

}  // namespace brindle
