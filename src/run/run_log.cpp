#include "run/run_log.h"

#include <cerrno>
#include <optional>
#include <string>
#include <vector>

#include "platform/path.h"

namespace brindle {
namespace {

/// By how many bytes the paths of folders may grow while the folders above them get their new names.
class PathGrowth {
 public:
  PathGrowth(const FileList& files, std::span<const std::uint32_t> rows) : folders_(files.folders()) {
    own_.resize(folders_.size());
    for (const std::uint32_t row : rows) {
      const ItemRecord& record = files[row];
      const FolderId folder = folders_.find_child(record.folder, record.name());
      if (folder == FolderTable::none || record.proposed().size() <= record.name().size()) continue;
      own_[folder] = record.proposed().size() - record.name().size();
    }
  }

  std::size_t of(FolderId folder) const {
    std::size_t sum = 0;
    for (; folder != FolderTable::root; folder = folders_.parent(folder)) sum += own_[folder];
    return sum;
  }

 private:
  const FolderTable& folders_;
  std::vector<std::size_t> own_;
};

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

LogRoom log_room(const FileList& files, std::span<const std::uint32_t> rows, bool paths_follow) {
  LogRoom room;
  std::optional<PathGrowth> growth;
  if (paths_follow) growth.emplace(files, rows);
  std::vector<std::optional<LogRoom::Folder>> folders(files.folders().size());
  std::string path;
  for (const std::uint32_t row : rows) {
    const ItemRecord& record = files[row];
    std::optional<LogRoom::Folder>& folder = folders[record.folder];
    if (!folder) {
      path.clear();
      files.folders().append_path(record.folder, path);
      folder.emplace(path, growth ? growth->of(record.folder) : 0);
    }
    room.add(*folder, record.name(), record.proposed());
  }
  return room;
}

Status begin_run_log(const std::string& log_folder, std::time_t when, const JournalInfo& info, JournalWriter& journal,
                     RenameLogWriter& log) {
  for (;; ++when) {
    Status status = try_name(join_path(log_folder, getNewLogFileName(when)), info, journal, log);
    if (status.error() != EEXIST) return status;
  }
}

}  // namespace brindle
