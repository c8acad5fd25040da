#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/json_lines.h"
#include "cli/log_folder.h"
#include "log/rename_log.h"
#include "platform/file_name.h"
#include "platform/path.h"
#include "platform/translation.h"
#include "plist/iso_date.h"
#include "settings/preferences.h"
#include "text/date_format.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

void print_json(const std::vector<LogRecord>& logs, const std::string& folder, Console& console) {
  for (const LogRecord& log : logs) {
    JsonLine(console.out().buffer(), "log")
        .bytes("name", log.logFileName)
        .bytes("path", join_path(folder, log.logFileName))
        .text("date", iso_text(log.dateCreated))
        .number("count", log.filesCount);
    console.out().flush_if_full();
  }
}

void print_table(const std::vector<LogRecord>& logs, const std::string& folder, Console& console) {
  if (logs.empty()) {
    console.note(translated("No logs in {}", folder));
    return;
  }
  const auto longest = std::ranges::max(logs, {}, &LogRecord::filesCount).filesCount;
  const std::size_t column = std::to_string(longest).size();
  const DateFormatter format(u"yyyy-MM-dd HH:mm:ss");
  for (const LogRecord& log : logs) {
    console.out() << fmt::format("{}  {:>{}} {}  ", to_utf8(format.format(log.dateCreated)), log.filesCount, column,
                                 translated("renamed"))
                  << console.shown(log.logFileName) << "\n";
  }
  console.out().flush();
  console.note(translated("{} in {}", localized_format("TOTALLOGFILES", logs.size()), folder));
}

}  // namespace

ExitCode run_logs(const CommandLine& line, Console& console) {
  const FinishedRuns finished = finish_interrupted_runs(console);
  const std::string folder = default_log_folder();
  const std::vector<LogRecord> logs = loadUserLogFiles(folder);
  if (line.options.json) {
    print_json(logs, folder, console);
  } else {
    print_table(logs, folder, console);
  }
  return finished.complete ? ExitCode::done : ExitCode::incomplete;
}

ExitCode run_recover(const CommandLine&, Console& console) {
  const FinishedRuns finished = finish_interrupted_runs(console);
  if (finished.count == 0) console.note(translated("No run was interrupted."));
  return finished.complete ? ExitCode::done : ExitCode::incomplete;
}

}  // namespace brindle
