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

/// The log a person means: a path, or a name in the log folder; the newest when `given` is empty. Throws UsageError
/// when there is no such log.
std::string find_log(const std::string& given);

}  // namespace brindle
