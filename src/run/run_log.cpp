#include "run/run_log.h"

namespace brindle {
namespace {

enum class Attempt { made, taken, failed };

// The journal comes first: a "#" log without a journal is then always one left behind.
Attempt try_name(const std::string& path, const JournalInfo& info, JournalWriter& journal, RenameLogWriter& log,
                 std::string& error) {
  error = journal.create(journal_path(path), info);
  if (!error.empty()) return journal.name_taken() ? Attempt::taken : Attempt::failed;
  // A run that ends puts its finished log there before it gives up its journal, so this look is not too early.
  const bool used = !find_finished_logs(path).empty();
  if (!used) error = log.createLogFile(path, info.isFolders ? "FOLDERS" : "FILES");
  if (!used && error.empty()) return Attempt::made;
  journal.remove();
  return used || log.name_taken() ? Attempt::taken : Attempt::failed;
}

}  // namespace

std::string begin_run_log(const std::string& log_folder, std::time_t when, const JournalInfo& info,
                          JournalWriter& journal, RenameLogWriter& log) {
  std::string error;
  Attempt attempt = Attempt::taken;
  for (; attempt == Attempt::taken; ++when) {
    attempt = try_name(log_folder + "/" + getNewLogFileName(when), info, journal, log, error);
  }
  return attempt == Attempt::made ? std::string() : error;
}

}  // namespace brindle
