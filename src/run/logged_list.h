#pragma once

// A rename log as a list, to be looked at before its run is undone or done again: its items where they are now, each
// with the name that it had, or got. One thread.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "list/disk_names.h"
#include "list/file_list.h"
#include "log/rename_log.h"
#include "platform/job.h"
#include "run/apply.h"

namespace brindle {

enum class LogDirection : std::uint8_t {
  forth,  ///< the run is done again: the new names are given
  back,   ///< it is undone: the old names come back
};

/// Whether the log is of a run that renamed folders.
bool is_log_of_folders(const LogFile& log);

struct LoggedPreview {
  std::size_t unusable = 0;  ///< entries that do not say what an item was called, or contradict others
  bool cancelled = false;
};

/// Fills an empty list with the items of a log and previews it, with permutations. A log tells the paths that there
/// were in its time; rows have those of before such a run, in the order in which it would go. An item that has the name
/// already stands under it and has "No Changes"; one that the log takes to another folder keeps its name, with the
/// reason. Nothing on disk is touched. Linear in the log.
///
/// Of items that pass their names round the disk does not tell whether they have already. They have, in a run that is
/// done again, when one of the logs `since` says so; these are read when it matters.
LoggedPreview preview_log(const LogFile& log, LogDirection direction, FileList& files, DiskNames& disk_names,
                          const JobControl& control, const std::vector<std::string>& since = {});

/// How a list that was made forth is renamed.
ApplyOptions redo_options(bool folders, std::string log_folder);
/// Whether each row has its new name, now or before, so that nothing of the log is left to do.
bool is_all_redone(const FileList& files);

}  // namespace brindle
