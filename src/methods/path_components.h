#pragma once

// Path components: the names of the folders that hold an item, put into the base of its name. Parameters are immutable;
// any number of threads may use them.

#include <cstdint>
#include <string>
#include <string_view>

#include "methods/placement.h"
#include "methods/rename_operation.h"

namespace brindle {

/// The arguments as the settings hold them. Texts are as typed: "/" becomes ":".
struct PathComponentsArguments {
  /// How many folder names, from the innermost outwards. Negative or more than there are: all of them, the root never.
  std::int32_t pathComponentsLevelNo = 1;
  std::int32_t pathComponentsOptionsIndex = 0;  ///< where they go, as for Insert
  std::int32_t pathComponentsAtPositionNo = 1;
  std::int32_t pathComponentsAtPositionDirection = 0;
  std::u16string_view pathComponentsAtBeforeText = {};
  std::int32_t pathComponentsAtBeforeOccurrence = 1;
  std::u16string_view pathComponentsAtAfterText = {};
  std::int32_t pathComponentsAtAfterOccurrence = 1;
  std::u16string_view pathComponentsSeparator = {};  ///< between folder names
  std::u16string_view pathComponentsPrefix = {};     ///< stands before them, also when there are none
  std::u16string_view pathComponentsSuffix = {};
};

class PathComponentsParameters {
 public:
  explicit PathComponentsParameters(const PathComponentsArguments& arguments);

  const Placement& placement() const { return placement_; }

  /// Replaces `text` by the prefix, the innermost names of `folder` (an absolute path), outermost first, and the
  /// suffix.
  void write_text(std::u16string_view folder, std::u16string& text) const;

 private:
  Placement placement_;
  std::uint64_t levels_;
  std::u16string separator_;
  std::u16string prefix_;
  std::u16string suffix_;
};

NameOutcome path_components(const PathComponentsParameters& parameters, std::u16string_view folder, WorkingName& name);

bool renameByPathComponents(FileSystemItem& item, const PathComponentsParameters& parameters, WorkingName& name,
                            std::u16string& error);

}  // namespace brindle
