#include <string>

#include "cli/commands.h"
#include "cli/log_folder.h"
#include "cli/logged_batch.h"
#include "cli/rename_command.h"
#include "platform/translation.h"
#include "run/undone_logs.h"
#include "settings/preferences.h"

namespace brindle {
namespace {

// What was done again as a whole need not be kept as undone. A run without a log leaves the only trace there is.
void put_redone_log_away(const std::string& log, const RenameBatch& batch, const ApplyResult& result,
                         Console& console) {
  const std::size_t renamed = count_rows(batch.files).renamed;
  const bool is_kept_in_log = renamed == 0 || (!result.log_path.empty() && result.error.empty());
  const bool is_whole = batch.left_out == 0 && is_all_redone(batch.files);
  const bool new_log_holds_it = renamed > 0 && renamed == batch.files.size();
  if (is_whole && is_kept_in_log && drop_redone_log(log, default_log_folder(), new_log_holds_it)) {
    if (renamed == 0) console.note(translated("Nothing is left to redo; the undone log is put into the trash."));
  }
  if (!is_whole) console.note(translated("The undone log stays: redoing it again tries what is left."));
}

}  // namespace

ExitCode run_redo(const CommandLine& line, Console& console) {
  if (line.options.dry_run) return show_dry_run(line, console, LogDirection::forth);
  const std::string log = find_undone_log(line.operands.empty() ? "" : line.operands.front());
  const RenamingSource source{
      [&](RenameBatch& batch) { return prepare_logged_batch(line, console, log, LogDirection::forth, batch); },
      [&](const RenameBatch& batch, const ApplyResult& result) { put_redone_log_away(log, batch, result, console); }};
  return rename_batch(line, console, source);
}

}  // namespace brindle
