#pragma once

// Insert puts a text into the base of each name; Delete cuts a run of units out of it. Odd parameters leave the name as
// it is. Parameters are immutable; any number of threads may use them.

#include <cstdint>
#include <string>
#include <string_view>

#include "methods/placement.h"
#include "methods/rename_operation.h"

namespace brindle {

/// The arguments as the settings hold them. Texts are as typed: "/" becomes ":".
struct InsertArguments {
  std::u16string_view insertText = {};
  std::int32_t insertOptionIndex = 0;     ///< 0 beginning, 1 end, 2 position, 3 before a text, 4 after a text
  std::int32_t atCharacterPositions = 1;  ///< 1-based; the text ends up before the unit there
  std::int32_t atPostionDirection = 0;    ///< 0 from the start, 1 from the end (the text goes behind that unit)
  std::u16string_view atBeforeText = {};
  std::int32_t atBeforeOccurrence = 1;
  std::u16string_view atAfterText = {};
  std::int32_t atAfterOccurrence = 1;
};

class InsertParameters {
 public:
  explicit InsertParameters(const InsertArguments& arguments);

  const std::u16string& text() const { return text_; }
  const Placement& placement() const { return placement_; }

 private:
  std::u16string text_;
  Placement placement_;
};

/// An option index other than 0 to 4 makes no name at all.
NameOutcome insert_text(const InsertParameters& parameters, WorkingName& name);

bool renameByInsert(FileSystemItem& item, const InsertParameters& parameters, WorkingName& name, std::u16string& error);

struct DeleteParameters {
  bool deleteFromBackward = false;  ///< positions count from the end
  std::int32_t fromCharacterPosition =
      1;                                ///< 1-based; negative or past the end: nothing is cut; 0: one unit less is cut
  std::int32_t numberOfCharacters = 0;  ///< units to cut; less than 1: none
};

NameOutcome delete_characters(const DeleteParameters& parameters, WorkingName& name);

bool renameByDelete(FileSystemItem& item, const DeleteParameters& parameters, WorkingName& name, std::u16string& error);

}  // namespace brindle
