#include "cli/log_folder.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <utility>
#include <vector>

#include "cli/arguments.h"
#include "cli/path_arguments.h"
#include "log/log_name.h"
#include "log/rename_log.h"
#include "log/undo_progress.h"
#include "platform/data_folders.h"
#include "platform/folder_handle.h"
#include "platform/path.h"
#include "platform/translation.h"
#include "run/recovery.h"
#include "run/undone_logs.h"
#include "settings/preferences.h"

namespace brindle {
namespace {

bool exists(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0;
}

}  // namespace

Result<std::string> make_log_folder() {
  std::string folder = default_log_folder();
  if (folder.empty())
    return Status(translated("there is no folder for logs: neither HOME nor XDG_DATA_HOME names one"));
  Status status;
  if (folder == getAppPath() + "/Logs") {
    status = createApplicationUsersFolder("Logs");
  } else if (!exists(folder)) {
    status = Status(translated("the folder for logs cannot be used: {}: {}", folder, translated(std::strerror(errno))));
  }
  if (!status.ok()) return status;
  return folder;
}

FinishedRuns finish_interrupted_runs(Console& console) {
  const std::string folder = default_log_folder();
  if (folder.empty()) return {};
  const RecoveryResult result = recover(folder);
  for (const RecoveredRun& run : result.runs) {
    if (run.log_path.empty()) continue;
    console.note(translated("The log of an interrupted run was finished: {} ({} renamed)", run.log_path, run.renamed));
  }
  for (const std::string& problem : result.problems) console.error(problem);
  for (const std::string& journal : result.set_aside) console.error(journal);
  const std::size_t troubled = result.problems.size() + result.set_aside.size();
  return {result.runs.size() + troubled, troubled == 0, may_undo(result)};
}

std::string find_unfinished_run() {
  const std::string path = default_log_folder();
  const FolderHandle folder = FolderHandle::open(path);
  if (!folder) return {};
  FolderReader reader;
  FolderEntry entry;
  for (reader.start(folder); reader.next(entry);) {
    if (is_journal_name(entry.name)) return join_path(path, entry.name);
  }
  return {};
}

namespace {

// Of the folders that a name may be in, the first that has it counts.
std::string find_named_log(const std::string& given, std::initializer_list<std::string> folders) {
  for (const std::string& folder : folders) {
    std::string beside_the_others = join_path(folder, given);
    if (given.find('/') == std::string::npos && exists(beside_the_others)) return beside_the_others;
  }
  if (exists(given)) return real_path(given);
  throw UsageError(translated("there is no log {} (brindle logs lists those in {})", given, *folders.begin()));
}

}  // namespace

std::string find_log(const std::string& given) {
  const std::string folder = default_log_folder();
  if (!given.empty()) return find_named_log(given, {folder});
  for (const LogRecord& log : loadUserLogFiles(folder)) {
    std::string path = join_path(folder, log.logFileName);
    // One that is undone already, and could not be put away, is not what a person means.
    if (broken_off_undo(path).end != UndoEnd::complete) return path;
  }
  throw UsageError(translated("there is nothing to undo: no logs in {}", folder));
}

std::string find_undone_log(const std::string& given) {
  const std::string folder = undone_folder(default_log_folder());
  if (!given.empty()) return find_named_log(given, {folder});
  std::vector<std::string> logs = undone_logs(default_log_folder());
  if (logs.empty()) throw UsageError(translated("there is nothing to redo: no undone logs in {}", folder));
  return std::move(logs.front());
}

std::string find_any_log(const std::string& given) {
  const std::string folder = default_log_folder();
  return find_named_log(given, {folder, undone_folder(folder)});
}

}  // namespace brindle
