#pragma once

// The folder of the logs, as the commands need it.

#include <cstddef>
#include <string>

#include "cli/console.h"
#include "platform/status.h"

namespace brindle {

/// The log folder, made when it is missing.
Result<std::string> make_log_folder();

/// How recovery went.
struct FinishedRuns {
  std::size_t count = 0;  ///< runs that had left something behind
  bool complete = true;   ///< none of them has to wait
  Status may_undo;        ///< whether something may be undone now
};

/// Finishes the logs of interrupted runs, and says so on standard error.
FinishedRuns finish_interrupted_runs(Console& console);

/// The journal of a run that was interrupted, or goes on; empty when there is none. Nothing is touched.
std::string find_unfinished_run();

/// The log a person means: a path, or a name in the log folder; the newest when `given` is empty. Throws UsageError
/// when there is no such log.
std::string find_log(const std::string& given);
/// The same for logs that were undone, in their folder: the one undone last when `given` is empty.
std::string find_undone_log(const std::string& given);
/// A log of either kind.
std::string find_any_log(const std::string& given);

}  // namespace brindle
