#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <tuple>

#include "log/rename_log.h"
#include "log/undo_progress.h"
#include "platform/ascii.h"
#include "platform/atomic_file.h"
#include "platform/data_folders.h"
#include "platform/file_name.h"
#include "platform/folder_handle.h"
#include "platform/path.h"
#include "platform/translation.h"
#include "platform/trash.h"
#include "text/number_text.h"

namespace brindle {
namespace {

std::int32_t count_in_name(std::string_view name) {
  const std::string_view base = name.substr(0, name.rfind('.'));
  const std::size_t dash = base.rfind('-');
  return integer_value(decode_file_name(dash == std::string_view::npos ? base : base.substr(dash + 1)));
}

Date date_created(const FolderHandle& folder, const char* name) {
  struct statx facts {};
  if (::statx(folder.descriptor(), name, AT_STATX_SYNC_AS_STAT, STATX_BTIME | STATX_MTIME, &facts) != 0) return {};
  const statx_timestamp& time = (facts.stx_mask & STATX_BTIME) != 0 ? facts.stx_btime : facts.stx_mtime;
  return Date(std::chrono::milliseconds(time.tv_sec * 1000 + time.tv_nsec / 1'000'000));
}

}  // namespace

std::string getLogFilePath() {
  const std::string app_path = getAppPath();
  const std::string name = getNewLogFileName(std::time(nullptr));
  return app_path.empty() ? name : join_path(app_path + "/Logs", name);
}

std::vector<LogRecord> loadUserLogFiles(const std::string& folder_path) {
  std::vector<LogRecord> records;
  const FolderHandle folder = FolderHandle::open(folder_path);
  if (!folder) return records;
  FolderReader reader;
  FolderEntry entry;
  for (reader.start(folder); reader.next(entry);) {
    if (!ends_ignoring_case(entry.name, ".xml") || is_open_log_name(entry.name)) continue;
    records.push_back({std::string(entry.name), date_created(folder, entry.name.data()), count_in_name(entry.name)});
  }
  std::sort(records.begin(), records.end(), [](const LogRecord& a, const LogRecord& b) {
    return std::tie(a.dateCreated, a.logFileName) > std::tie(b.dateCreated, b.logFileName);
  });
  return records;
}

bool verifyLogFile(const std::string& path) {
  const Result<LogFile> log = readLogFile(path);
  return log.ok() && !log->entries.empty();
}

Status deleteLogFile(const std::string& path) {
  if (!move_to_trash(path).ok() && ::unlink(path.c_str()) != 0) {
    const int error = errno;
    return Status(translated("the log “{}” cannot be removed: {}", path, translated(system_error_text(error))), error);
  }
  ::unlink(undo_progress_path(path).c_str());
  return {};
}

}  // namespace brindle
