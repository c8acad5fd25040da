#include "run/run_log.h"

#include <cerrno>

namespace brindle {
namespace {

// The journal comes first: a "#" log without a journal is then always one left behind. EEXIST: the second is taken.
Status try_name(const std::string& path, const JournalInfo& info, JournalWriter& journal, RenameLogWriter& log) {
  if (Status status = journal.create(journal_path(path), info); !status.ok()) return status;
  // A run that ends puts its finished log there before it gives up its journal, so this look is not too early.
  const bool used = !find_finished_logs(path).empty();
  Status status = used ? Status("a finished log has the name", EEXIST)
                       : log.createLogFile(path, info.isFolders ? "FOLDERS" : "FILES");
  if (!status.ok()) journal.remove();
  return status;
}

}  // namespace

Status begin_run_log(const std::string& log_folder, std::time_t when, const JournalInfo& info, JournalWriter& journal,
                     RenameLogWriter& log) {
  for (;; ++when) {
    Status status = try_name(log_folder + "/" + getNewLogFileName(when), info, journal, log);
    if (status.error() != EEXIST) return status;
  }
}

}  // namespace brindle
