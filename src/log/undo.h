#pragma once

// Undo: moves every target of a log back to its source, last entry first. Nothing is ever replaced.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "log/rename_log.h"
#include "pipeline/job.h"

namespace brindle {

/// Hears of each entry as it has been dealt with, in the order of the walk. `reason` is empty when the entry is
/// restored, else says why it was left alone. `moved`: it was moved back just now, and not by an undo of the same log
/// that was broken off. Called on the job's thread.
using UndoReport = std::function<void(const LogEntry& entry, std::string_view reason, bool moved)>;

struct UndoResult {
  std::size_t entries = 0;   ///< in the log, unusable ones too
  std::size_t restored = 0;  ///< by this undo or one of the same log before that was broken off
  bool cancelled = false;  ///< broken off between two entries; the log is kept, and undoing it again goes on from there
  bool log_removed = false;
  std::string error;  ///< why nothing was undone at all, or why the log could not be removed (UTF-8, one line)
};

/// Undoes a log and removes it (to the trash where there is one), also when some entries could not be restored. A log
/// that cannot be read is kept. Killed at any moment, it can be run again: how far it got stands in a small file beside
/// the log.
UndoResult undoRenaming(const std::string& log_path, const JobControl& control, const UndoReport& report = {});
/// The same with the log already read from `log_path`.
UndoResult undoRenaming(const std::string& log_path, const LogFile& log, const JobControl& control,
                        const UndoReport& report = {});

}  // namespace brindle
