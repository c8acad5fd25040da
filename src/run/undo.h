#pragma once

// Undo: moves every target of a log back to its source, last entry first. Nothing is ever replaced.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "log/rename_log.h"
#include "platform/job.h"

namespace brindle {

/// What became of one entry.
enum class UndoOutcome : std::uint8_t {
  moved,     ///< just now moved back
  restored,  ///< moved back by an undo of the same log that did not restore everything
  already,   ///< it has its old name without our doing
  left,      ///< left alone, for the reason given
};

/// Hears of each entry as it has been dealt with, in the order of the walk. `reason` is empty but for `left`. Called on
/// the job's thread.
using UndoReport = std::function<void(const LogEntry& entry, UndoOutcome outcome, std::string_view reason)>;

struct UndoOptions {
  /// Where runs keep their logs, and undone ones are put away. Interrupted runs in it are finished first; while one
  /// cannot be, or a run is going on, nothing is undone. Empty: the folder of the log, and nothing is finished first.
  std::string log_folder;
  /// Believe a log that is not our own (see is_own_log) also where it moves items from folder to folder.
  bool from_elsewhere = false;
};

struct UndoResult {
  std::size_t entries = 0;   ///< in the log, unusable ones too
  std::size_t reached = 0;   ///< entries that were dealt with: all, unless cancelled
  std::size_t restored = 0;  ///< by this undo or one of the same log before that did not restore everything
  std::size_t already = 0;   ///< entries that had their old names without that
  bool cancelled = false;  ///< broken off between two entries; the log is kept, and undoing it again goes on from there
  bool put_away = false;   ///< every entry has its old name, and the log is where undone logs go
  std::string log_path;    ///< where the log is now; empty when it is in the trash
  std::string error;       ///< why nothing was undone at all, or why the log could not be put away (UTF-8, one line)

  std::size_t left_alone() const { return reached - restored - already; }
};

/// Undoes a log. When every entry has its old name afterwards the log is put away (run/undone_logs.h); else it stays,
/// and undoing it again tries what was left alone once more. A log that cannot be read is kept. Killed at any moment,
/// it can be run again: the disk tells how far it got, with the help of a small file beside the log.
UndoResult undoRenaming(const std::string& log_path, const JobControl& control, const UndoReport& report = {},
                        const UndoOptions& options = {});
/// The same with the log already read from `log_path`.
UndoResult undoRenaming(const std::string& log_path, const LogFile& log, const JobControl& control,
                        const UndoReport& report = {}, const UndoOptions& options = {});

}  // namespace brindle
