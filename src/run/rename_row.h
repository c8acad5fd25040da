#pragma once

// One row's proposed name: whether it is a change, and free; the rename on disk, and what comes of it. The rename is
// the part of a run that several threads may do at once, each in folders of its own.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "list/disk_names.h"
#include "list/file_list.h"
#include "log/journal.h"
#include "platform/folder_handle.h"
#include "platform/translation.h"

namespace brindle {

/// What became of one attempt.
struct RowOutcome {
  ItemStatus status = ItemStatus::none;  ///< none: not attempted
  int error = 0;                         ///< errno behind "No Changes"; see describe_error
  bool is_stranded = false;              ///< under neither its old nor its new name, until the journal is recovered
};

struct RowRules {
  bool case_method =
      false;  ///< the General method with an option that changes letter case: a taken name is a failed move
};

/// Moves the row's entry to its proposed name, in the folder it lies in (as OpenFolder opens it), and keeps its entry
/// of the journal up to date meanwhile (`journal` may be null).
RowOutcome rename_row(const ItemRecord& record, const FolderHandle& folder, const RowRules& rules,
                      JournalWriter* journal, std::size_t index);

/// The same for rows of one folder that pass their names round (see NameCycle): all of them get their new names, or all
/// keep their old ones. `first` is the number of the first one's entry, `reserved` the name that the journal has for
/// it.
std::vector<RowOutcome> rename_cycle(const FileList& files, std::span<const std::uint32_t> rows,
                                     const FolderHandle& folder, const std::string& reserved, JournalWriter* journal,
                                     std::size_t first);

/// The reason of a failed attempt, in words. Of folders that OpenFolder opens, ESTALE says that another one stands
/// there, and ELOOP that a symbolic link does.
std::string_view describe_error(int error);

/// Why a new name that reads like a status is none.
inline constexpr std::string_view status_text_reason =
    to_translate("the new name is one of the texts that stand for a status");

/// Settles a row that has a proposed name: "No Changes" when it is the name that the item has, with the reason when
/// the program's own data hangs on that name, "… Already Exists" when something else in the folder has it (a change of
/// case alone keeps its proposed name, and has a problem when another entry bears it). True when nothing stands in the
/// way. `disk_names` has entered the row's folder.
bool check_new_name(FileList& files, std::size_t row, DiskNames& disk_names);

}  // namespace brindle
