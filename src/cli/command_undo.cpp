#include <fmt/format.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/json_lines.h"
#include "cli/listing.h"
#include "cli/log_folder.h"
#include "cli/logged_batch.h"
#include "cli/path_arguments.h"
#include "cli/rename_batch.h"
#include "list/item_status.h"
#include "log/rename_log.h"
#include "platform/cancellation.h"
#include "platform/file_name.h"
#include "platform/real_path.h"
#include "platform/translation.h"
#include "run/undo.h"
#include "settings/preferences.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::string path_of(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (path.empty() || path.back() != '/') path += '/';
  return path.append(name);
}

/// Prints what became of each entry, or keeps what went wrong for the end.
class UndoReporter {
 public:
  UndoReporter(bool json, Console& console) : json_(json), console_(console) {}

  void operator()(const LogEntry& entry, UndoOutcome outcome, std::string_view reason) {
    if (json_) {
      print(entry, outcome, reason);
    } else if (outcome == UndoOutcome::left) {
      const bool usable = entry.fault.empty();
      left_alone_[std::string(reason)].push_back(usable ? path_of(entry.target_folder, entry.target_name)
                                                        : translated("(an unusable entry)"));
    }
  }

  void report_left_alone() {
    const std::string folder = left_alone_.empty() ? "" : current_folder();
    for (const auto& [reason, paths] : left_alone_) {
      console_.error(translated_count(paths.size(), "{} item left alone: {}", "{} items left alone: {}", paths.size(),
                                      translated(reason)));
      for (const std::string& path : paths) console_.append_error_line("  ", relative_path(path, folder));
    }
  }

 private:
  void print(const LogEntry& entry, UndoOutcome outcome, std::string_view reason) {
    const bool restored = outcome == UndoOutcome::moved || outcome == UndoOutcome::restored;
    const bool left = outcome == UndoOutcome::left;
    const std::string source = path_of(entry.source_folder, entry.source_name);
    const std::string target = path_of(entry.target_folder, entry.target_name);
    JsonLine line(console_.out().buffer(), "item");
    if (entry.fault.empty()) line.bytes("path", left ? target : source).bytes("oldPath", target);
    line.text("newFilename", to_utf8(status_text(restored ? ItemStatus::renaming_ok : ItemStatus::no_changes)));
    line.flag("renamed", restored);
    if (left) line.text("reason", reason);
    if (outcome == UndoOutcome::already) line.text("reason", "it has its old name already");
    console_.out().flush_if_full();
  }

  bool json_;
  Console& console_;
  std::map<std::string, std::vector<std::string>> left_alone_;
};

void print_json_summary(const UndoResult& result, double seconds, Console& console) {
  JsonLine line(console.out().buffer(), "summary");
  line.text("command", "undo")
      .number("items", result.entries)
      .number("entries", result.entries)
      .number("restored", result.restored);
  if (result.log_path.empty()) {
    line.null("log");
  } else {
    line.bytes("log", result.log_path);
  }
  line.seconds("seconds", seconds);
}

void print_summary_for_people(const UndoResult& result, Console& console) {
  if (console.quiet()) return;
  if (result.cancelled) {
    console.out() << translated("Cancelled before {} of the {} items: undoing again goes on from here.\n",
                                result.entries - result.reached, result.entries);
  }
  console.out() << localized_format("UNDOTOTALNOSITEMSFOUND", result.entries)
                << localized_format("UNDOTOTALNOSITEMSRENAMED", result.restored);
  if (result.already > 0) console.out() << localized_format("UNDOTOTALNOSITEMSALREADY", result.already);
  console.out() << localized_format("UNDOTOTALNOSITEMDOESNOTEXISTS", result.left_alone()) << "\n";
  if (result.left_alone() > 0)
    console.note(translated("The log stays: undoing it again tries what was left alone once more."));
}

bool is_wanted(const std::string& log, std::size_t entries, const Options& options, Console& console) {
  if (options.yes) return !is_cancelled();
  console.note(fmt::format("{}: {}", localized("UNDOFILESFOLDERSTITLE"), log));
  return console.ask(translated_count(entries, "Give {} item back the old name? [y/N]",
                                      "Give {} items back the old name? [y/N]", entries));
}

}  // namespace

ExitCode run_undo(const CommandLine& line, Console& console) {
  const Stopwatch watch;
  if (line.options.dry_run) return show_dry_run(line, console, LogDirection::back);
  if (!line.options.yes && !console.in_is_terminal()) {
    throw UsageError(
        translated("undo asks before it renames, and standard input is no terminal; --yes undoes without asking"));
  }
  const FinishedRuns finished = finish_interrupted_runs(console);
  if (!finished.may_undo.ok()) {
    console.error(finished.may_undo.reason());
    return ExitCode::incomplete;
  }
  const std::string log = find_log(line.operands.empty() ? "" : line.operands.front());
  std::size_t entries = 0;
  {
    const Result<LogFile> file = readLogFile(log);
    if (!file.ok()) throw UsageError(file.reason());
    entries = file->entries.size();
  }
  if (!is_wanted(log, entries, line.options, console)) {
    console.note(translated("Nothing was undone."));
    return is_cancelled() ? ExitCode::cancelled : ExitCode::done;
  }
  UndoReporter reporter(line.options.json, console);
  UndoResult result;
  {
    ProgressLine progress(console, translated("Restoring"));
    const UndoOptions options{default_log_folder(), line.options.from_elsewhere};
    result = undoRenaming(log, {&cancel_flag(), &progress}, std::ref(reporter), options);
  }
  reporter.report_left_alone();
  if (!result.error.empty()) console.error(result.error);
  if (line.options.json) {
    print_json_summary(result, watch.seconds(), console);
  } else if (result.reached > 0 || result.error.empty()) {
    print_summary_for_people(result, console);
  }
  if (result.cancelled) return ExitCode::cancelled;
  return result.put_away ? ExitCode::done : ExitCode::incomplete;
}

}  // namespace brindle
