#pragma once

// Preview: the new name of every item, and what stands in its way. Nothing on disk is touched. Any thread, the list,
// the plan and the disk's names the caller's alone until it returns.

#include <cstddef>
#include <optional>
#include <string>

#include "list/disk_names.h"
#include "list/file_list.h"
#include "methods/rename_plan.h"
#include "platform/job.h"
#include "settings/run_choices.h"

namespace brindle {

struct PreviewResult {
  bool result = false;  ///< that of the last operation; false for an empty list (true for rename-from-list)
  bool isHasFilesForRenaming = false;  ///< at least one item would really be renamed
  bool cancelled = false;
  std::size_t processed = 0;   ///< rows looked at
  std::size_t renameable = 0;  ///< rows that are promised a name now
  std::size_t problems = 0;    ///< rows that will not get the name that they were to get
  std::size_t warnings = 0;
  std::u16string error;  ///< the first operation error, "" for none; the run is then not to be displayed
  std::optional<std::size_t> error_row;  ///< the row it happened on; every failing row also keeps its own reason
};

/// The full preview, for a single method and for a chain. Sorts the list by folder first when counters restart there.
/// Checks each item and its new name against the disk, one item at a time, and then all of them against each other
/// (run/second_look.h): of two items that would get the same name, the first is promised it.
PreviewResult preview(FileList& files, RenamePlan& plan, DiskNames& disk_names, const JobControl& control,
                      const RunChoices& choices = {});

/// The preview while a person types: names only, no look at the disk, and only so many items (the rest stay at
/// "No New Name"). `limit` 0 means all; otherwise the run counts items up to exactly that number.
PreviewResult quickPreview(FileList& files, RenamePlan& plan, std::size_t limit, const JobControl& control,
                           const RunChoices& choices = {});

}  // namespace brindle
