#pragma once

// One row's rename on disk, and what comes of it. The part of a run that several threads may do at once, each in
// folders of its own.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "log/journal.h"
#include "pipeline/file_list.h"
#include "platform/folder_handle.h"

namespace brindle {

/// What became of one attempt.
struct RowOutcome {
  ItemStatus status = ItemStatus::none;  ///< none: not attempted
  int error = 0;                         ///< errno behind "No Changes"; `other_file` for a path that leads elsewhere
};

/// Stands for an errno: the path leads to another file than the one that was listed.
inline constexpr int other_file = -1;

struct RowRules {
  bool case_method =
      false;  ///< the General method with an option that changes letter case: a taken name is a failed move
};

/// Moves the row's entry to its proposed name, in the open folder it lies in, and keeps its entry of the journal up to
/// date meanwhile (`journal` may be null). With `doubtful`, only when the entry is the one that was listed.
RowOutcome rename_row(const ItemRecord& record, const FolderHandle& folder, const RowRules& rules, bool doubtful,
                      JournalWriter* journal, std::size_t index);

/// The reason of a failed attempt, in words.
std::string_view describe_error(int error);

}  // namespace brindle
