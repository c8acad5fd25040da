#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "cli/commands.h"
#include "cli/json_lines.h"
#include "cli/listing.h"
#include "cli/log_folder.h"
#include "log/log_outline.h"
#include "log/rename_log.h"
#include "log/undo_progress.h"
#include "platform/file_name.h"
#include "platform/path.h"
#include "platform/real_path.h"
#include "platform/translation.h"
#include "plist/iso_date.h"
#include "run/undone_logs.h"
#include "settings/preferences.h"
#include "text/date_format.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

struct PastRun {
  LogRecord record;
  std::string path;
  bool is_undone = false;
};

// Newest first. One that is undone, and could not be put away, still stands among the others.
std::vector<PastRun> past_runs(const std::string& log_folder) {
  std::vector<PastRun> runs;
  const std::string undone = undone_folder(log_folder);
  for (const std::string& folder : {log_folder, undone}) {
    for (LogRecord& record : loadUserLogFiles(folder)) {
      std::string path = join_path(folder, record.logFileName);
      const bool is_undone = folder == undone || broken_off_undo(path).end == UndoEnd::complete;
      runs.push_back({std::move(record), std::move(path), is_undone});
    }
  }
  std::ranges::stable_sort(runs, std::greater<>(),
                           [](const PastRun& run) { return std::tie(run.record.dateCreated, run.record.logFileName); });
  return runs;
}

void print_json(const PastRun& run, Console& console) {
  const Result<LogOutline> outline = read_log_outline(run.path);
  JsonLine line(console.out().buffer(), "log");
  line.bytes("name", run.record.logFileName)
      .bytes("path", run.path)
      .text("date", iso_text(run.record.dateCreated))
      .number("count", run.record.filesCount)
      .flag("undone", run.is_undone);
  if (!outline.ok()) {
    line.text("reason", outline.reason());
  } else if (outline->folders > 0) {
    line.bytes("folder", outline->common_folder)
        .number("folders", outline->folders)
        .names("first", {"old", "new"}, {outline->old_name, outline->new_name});
  }
}

/// The logs for people, two lines each.
class LogTable {
 public:
  LogTable(const std::vector<PastRun>& runs, Console& console)
      : console_(console), text_(console.out().buffer()), folder_(current_folder()) {
    for (const PastRun& run : runs) column_ = std::max(column_, std::to_string(run.record.filesCount).size());
  }

  void print(const PastRun& run) {
    text_ += fmt::format("{}  {:>{}} {}  ", to_utf8(format_.format(run.record.dateCreated)), run.record.filesCount,
                         column_, run.is_undone ? translated("undone") : translated("renamed"));
    console_.append_shown(run.record.logFileName, text_);
    text_ += "\n    ";
    const Result<LogOutline> outline = read_log_outline(run.path);
    if (!outline.ok()) {
      text_ += outline.reason();
    } else if (outline->folders == 0) {
      text_ += translated("(no entries)");
    } else {
      print_outline(*outline);
    }
    text_ += '\n';
    console_.out().flush_if_full();
  }

 private:
  void print_outline(const LogOutline& outline) {
    console_.append_shown(relative_path(outline.common_folder, folder_), text_);
    if (outline.folders > 1)
      text_ += translated_count(outline.folders, " ({} folder)", " ({} folders)", outline.folders);
    text_ += ": ";
    console_.append_shown(outline.old_name, text_);
    text_ += console_.out_is_terminal() ? " → " : " -> ";
    console_.append_shown(outline.new_name, text_);
  }

  Console& console_;
  std::string& text_;
  const std::string folder_;
  const DateFormatter format_{u"yyyy-MM-dd HH:mm:ss"};
  std::size_t column_ = 1;
};

void print_all(const Options& options, Console& console) {
  const std::string folder = default_log_folder();
  const std::vector<PastRun> runs = past_runs(folder);
  if (!options.json && runs.empty()) return console.note(translated("No logs in {}", folder));
  LogTable table(runs, console);
  for (const PastRun& run : runs) {
    if (console.out().closed()) return;
    if (options.json) {
      print_json(run, console);
      console.out().flush_if_full();
    } else {
      table.print(run);
    }
  }
  if (options.json) return;
  console.out().flush();
  console.note(translated("{} in {}", localized_format("TOTALLOGFILES", runs.size()), folder));
}

// An entry as the log has it: in logs of folders, with the paths of its time.
void print_entry_json(const LogEntry& entry, Console& console) {
  JsonLine line(console.out().buffer(), "entry");
  if (!entry.fault.empty()) {
    line.text("reason", entry.fault);
    return;
  }
  line.bytes("folder", entry.source_folder).bytes("old", entry.source_name).bytes("new", entry.target_name);
  if (entry.target_folder != entry.source_folder) line.bytes("newFolder", entry.target_folder);
}

void print_entry(const LogEntry& entry, std::string_view folder, Console& console) {
  std::string& text = console.out().buffer();
  if (!entry.fault.empty()) {
    text.append(translated("(an unusable entry)")).append(": ").append(translated(entry.fault)).append("\n");
    return;
  }
  const bool stays = entry.target_folder == entry.source_folder;
  console.append_shown(relative_path(join_path(entry.source_folder, entry.source_name), folder), text);
  text += console.out_is_terminal() ? " → " : " -> ";
  console.append_shown(stays ? std::string(entry.target_name) : join_path(entry.target_folder, entry.target_name),
                       text);
  text += '\n';
}

ExitCode print_log(const std::string& path, const Options& options, Console& console) {
  const Result<LogFile> log = readLogFile(path);
  if (!log.ok()) throw UsageError(log.reason());
  const std::string folder = current_folder();
  bool is_usable = true;
  for (const LogEntry& entry : log->entries) {
    if (console.out().closed()) break;
    is_usable = is_usable && entry.fault.empty();
    if (options.json) {
      print_entry_json(entry, console);
    } else {
      print_entry(entry, folder, console);
    }
    console.out().flush_if_full();
  }
  return is_usable ? ExitCode::done : ExitCode::incomplete;
}

}  // namespace

ExitCode run_logs(const CommandLine& line, Console& console) {
  const FinishedRuns finished = finish_interrupted_runs(console);
  ExitCode code = ExitCode::done;
  if (line.operands.empty()) {
    print_all(line.options, console);
  } else {
    code = print_log(find_any_log(line.operands.front()), line.options, console);
  }
  return finished.complete ? code : ExitCode::incomplete;
}

ExitCode run_recover(const CommandLine&, Console& console) {
  const FinishedRuns finished = finish_interrupted_runs(console);
  if (finished.count == 0) console.note(translated("No run was interrupted."));
  return finished.complete ? ExitCode::done : ExitCode::incomplete;
}

}  // namespace brindle
