#include "run/undone_logs.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "log/log_name.h"
#include "log/rename_log.h"
#include "platform/ascii.h"
#include "platform/atomic_file.h"
#include "platform/folder_handle.h"
#include "platform/move.h"
#include "platform/path.h"
#include "platform/translation.h"
#include "platform/trash.h"

namespace brindle {
namespace {

constexpr std::size_t most_logs = 50;
constexpr std::string_view undone_folder_name = "Undone";

// "Log … 3.xml", then "Log … 3 (2).xml": the number of items stays in its place.
std::string numbered(const std::string& name, int number) {
  if (number == 1) return name;
  const std::size_t dot = std::min(name.rfind('.'), name.size());
  return fmt::format("{} ({}){}", name.substr(0, dot), number, name.substr(dot));
}

// The one undone last first.
std::vector<std::string> names_by_time(const FolderHandle& folder) {
  std::vector<std::pair<std::int64_t, std::string>> logs;
  FolderReader reader;
  FolderEntry entry;
  for (reader.start(folder); reader.next(entry);) {
    struct stat facts {};
    if (!ends_ignoring_case(entry.name, ".xml")) continue;
    if (::fstatat(folder.descriptor(), entry.name.data(), &facts, AT_SYMLINK_NOFOLLOW) != 0) continue;
    logs.emplace_back(facts.st_mtim.tv_sec * 1'000'000'000 + facts.st_mtim.tv_nsec, entry.name);
  }
  std::sort(logs.begin(), logs.end(), std::greater<>());
  std::vector<std::string> names;
  names.reserve(logs.size());
  for (auto& log : logs) names.push_back(std::move(log.second));
  return names;
}

void send_old_ones_to_trash(const FolderHandle& folder, const std::string& path) {
  const std::vector<std::string> names = names_by_time(folder);
  for (std::size_t i = most_logs; i < names.size(); ++i) {
    if (!move_to_trash(join_path(path, names[i])).ok()) return;
  }
}

int move_to_undone(const PathParts& from, const std::string& undone, std::string& place) {
  if (::mkdir(undone.c_str(), 0700) != 0 && errno != EEXIST) return errno;
  const FolderHandle old_folder = FolderHandle::open(from.folder);
  const FolderHandle new_folder = FolderHandle::open(undone);
  if (!old_folder || !new_folder) return old_folder ? new_folder.error() : old_folder.error();
  std::string name;
  int error = EEXIST;
  for (int number = 1; error == EEXIST; ++number) {
    name = numbered(from.name, number);
    error = move_exclusively(old_folder, from.name.c_str(), new_folder, name.c_str());
  }
  if (error != 0) return error;
  place = join_path(undone, name);
  ::utimensat(new_folder.descriptor(), name.c_str(), nullptr, AT_SYMLINK_NOFOLLOW);  // the time of the undo
  send_old_ones_to_trash(new_folder, undone);
  return 0;
}

}  // namespace

bool is_own_log(const std::string& log_path, const std::string& log_folder) {
  struct stat folder {};
  struct stat own_folder {};
  struct stat log {};
  return ::stat(split_path(log_path).folder.c_str(), &folder) == 0 && ::stat(log_folder.c_str(), &own_folder) == 0 &&
         folder.st_ino == own_folder.st_ino && folder.st_dev == own_folder.st_dev &&
         ::lstat(log_path.c_str(), &log) == 0 && S_ISREG(log.st_mode) && log.st_uid == ::geteuid();
}

bool is_put_away(const std::string& log_path) {
  return split_path(split_path(log_path).folder).name == undone_folder_name;
}

Result<std::string> put_undone_log_away(const std::string& log_path, const std::string& log_folder) {
  std::string place;
  const int error = move_to_undone(split_path(log_path), undone_folder(log_folder), place);
  if (error == 0 || move_to_trash(log_path).ok()) return place;
  return Status(
      translated("the log “{}” is undone, but cannot be put away: {}", log_path, translated(system_error_text(error))),
      error);
}

std::string undone_folder(const std::string& log_folder) {
  return join_path(log_folder, undone_folder_name);
}

std::vector<std::string> undone_logs(const std::string& log_folder) {
  const std::string path = undone_folder(log_folder);
  const FolderHandle folder = FolderHandle::open(path);
  if (!folder) return {};
  std::vector<std::string> logs = names_by_time(folder);
  for (std::string& log : logs) log = join_path(path, log);
  return logs;
}

std::vector<std::string> logs_since_undo(const std::string& undone_log, const std::string& log_folder) {
  struct stat facts {};
  if (::stat(undone_log.c_str(), &facts) != 0) return {};
  const Date undone(std::chrono::milliseconds(facts.st_mtim.tv_sec * 1000 + facts.st_mtim.tv_nsec / 1'000'000));
  std::vector<std::string> logs;
  for (const LogRecord& record : loadUserLogFiles(log_folder)) {
    if (record.dateCreated < undone) break;
    logs.push_back(join_path(log_folder, record.logFileName));
  }
  return logs;
}

bool drop_redone_log(const std::string& log_path, const std::string& log_folder, bool new_log_holds_it) {
  if (!is_own_log(log_path, undone_folder(log_folder))) return false;
  return new_log_holds_it ? ::unlink(log_path.c_str()) == 0 : deleteLogFile(log_path).ok();
}

}  // namespace brindle
