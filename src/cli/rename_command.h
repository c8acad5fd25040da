#pragma once

// What the commands that rename have in common: the listing, the question, the run, and what is said of it.

#include <functional>
#include <optional>
#include <string_view>

#include "cli/arguments.h"
#include "cli/console.h"
#include "cli/exit_code.h"
#include "cli/rename_batch.h"
#include "run/apply.h"

namespace brindle {

/// Where the items and their new names come from.
struct RenamingSource {
  /// Fills and previews the batch. When there is nothing to go on with, everything has been said, and the exit code is
  /// the answer.
  std::function<std::optional<ExitCode>(RenameBatch& batch)> prepare;
  /// Hears of the end of a run, also of one that had nothing to rename; may be null.
  std::function<void(const RenameBatch& batch, const ApplyResult& result)> done;
};

/// Finishes interrupted runs, shows the preview, asks, renames, and tells what became of it. Throws UsageError.
ExitCode rename_batch(const CommandLine& line, Console& console, const RenamingSource& source);

/// Shows a previewed batch and nothing else; as JSON, its items without a summary. `how_to_do_it` is a sentence to
/// translate.
ExitCode show_preview(const CommandLine& line, Console& console, const RenameBatch& batch,
                      std::string_view how_to_do_it);

}  // namespace brindle
