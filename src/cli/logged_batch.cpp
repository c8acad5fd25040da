#include "cli/logged_batch.h"

#include "cli/json_lines.h"
#include "cli/log_folder.h"
#include "cli/path_arguments.h"
#include "cli/rename_command.h"
#include "log/rename_log.h"
#include "platform/cancellation.h"
#include "platform/real_path.h"
#include "platform/translation.h"
#include "run/undone_logs.h"
#include "settings/preferences.h"

namespace brindle {
namespace {

// The items that undo would deal with are the log's entries.
void print_dry_summary(const CommandLine& line, Console& console, const std::string& log, LogDirection direction,
                       const RenameBatch& batch, double seconds) {
  const Tally tally = count_rows(batch.files);
  if (direction == LogDirection::forth) {
    print_summary(console.out().buffer(), {line.command->word, {tally.items, tally.proposed, 0}, {}, seconds});
    return;
  }
  JsonLine(console.out().buffer(), "summary")
      .text("command", line.command->word)
      .number("items", tally.items)
      .number("entries", tally.items + batch.left_out)
      .number("renameable", tally.proposed)
      .number("restored", 0)
      .bytes("log", log)
      .seconds("seconds", seconds);
}

}  // namespace

std::optional<ExitCode> prepare_logged_batch(const CommandLine& line, Console& console, const std::string& log,
                                             LogDirection direction, RenameBatch& batch) {
  const Result<LogFile> file = readLogFile(log);
  if (!file.ok()) throw UsageError(file.reason());
  batch.folder = current_folder();
  batch.request.settings.selectedTab = -1;  // of no method
  batch.request.settings.isFolders = is_log_of_folders(*file);
  batch.request.settings.isIncludeSubFolders = true;
  batch.request.choices.permute = true;
  ProgressLine progress(console, translated("Found"));
  const LoggedPreview result = preview_log(*file, direction, batch.files, batch.disk_names, {&cancel_flag(), &progress},
                                           logs_since_undo(log, default_log_folder()));
  batch.paths = batch.files.size();
  batch.left_out = result.unusable;
  if (result.unusable > 0) {
    console.error(translated_count(result.unusable, "{} entry of the log cannot be used",
                                   "{} entries of the log cannot be used", result.unusable));
  }
  if (!result.cancelled) return std::nullopt;
  if (line.options.json) print_summary(console.out().buffer(), {line.command->word, {batch.files.size(), 0, 0}, {}, 0});
  return ExitCode::cancelled;
}

ExitCode show_dry_run(const CommandLine& line, Console& console, LogDirection direction) {
  const Stopwatch watch;
  if (const std::string run = find_unfinished_run(); !run.empty()) {
    console.error(translated(
        "a renaming was interrupted, or is going on: {}; brindle recover finishes what was interrupted", run));
    return ExitCode::incomplete;
  }
  const std::string given = line.operands.empty() ? "" : line.operands.front();
  const std::string log = direction == LogDirection::back ? find_log(given) : find_undone_log(given);
  RenameBatch batch;
  if (const auto answer = prepare_logged_batch(line, console, log, direction, batch)) return *answer;
  const ExitCode code = show_preview(line, console, batch, to_translate("To do it, leave out --dry-run."));
  if (line.options.json) print_dry_summary(line, console, log, direction, batch, watch.seconds());
  return code;
}

}  // namespace brindle
