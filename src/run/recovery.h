#pragma once

// Recovery: turns what an interrupted run left in the log folder into a finished log.

#include <cstddef>
#include <string>
#include <vector>

#include "platform/status.h"

namespace brindle {

struct RecoveredRun {
  std::string log_path;     ///< the finished log; empty when nothing had been begun and all traces were removed
  std::size_t renamed = 0;  ///< entries in it
};

struct RecoveryResult {
  std::vector<RecoveredRun> runs;
  std::vector<std::string> going_on;  ///< the "#" logs of runs still going on, in this process or another
  std::vector<std::string>
      problems;  ///< a line each (UTF-8) for a run that could not be finished; the next call tries again
  std::vector<std::string> set_aside;  ///< a line each (UTF-8) for a journal that is damaged: it was given another name
};

/// Finishes the logs of all interrupted runs whose journals are in the folder, oldest first. Runs still going on, in
/// this process or another, are left alone. May be called at any time, from several processes at once; when it is
/// interrupted itself, the next call goes on. A folder that does not exist holds no journals. Any thread.
RecoveryResult recover(const std::string& log_folder);

/// Whether something in the folder may be undone just now; not when the newest run has no log yet.
Status may_undo(const RecoveryResult& recovery);

}  // namespace brindle
