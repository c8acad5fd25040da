#pragma once

// A log as a batch: what its undo or redo would do.

#include <optional>
#include <string>

#include "cli/arguments.h"
#include "cli/console.h"
#include "cli/exit_code.h"
#include "cli/rename_batch.h"
#include "run/logged_list.h"

namespace brindle {

/// Fills and previews the batch. An exit code when there is nothing to go on with: that has been said, as JSON too.
/// Throws UsageError when the log cannot be read.
std::optional<ExitCode> prepare_logged_batch(const CommandLine& line, Console& console, const std::string& log,
                                             LogDirection direction, RenameBatch& batch);

/// Shows what undo or redo, as the line asks for it, would do. Nothing is touched; where a run that was interrupted, or
/// goes on, stands in the way, that is said instead. Throws UsageError.
ExitCode show_dry_run(const CommandLine& line, Console& console, LogDirection direction);

}  // namespace brindle
