#include "run/log_room.h"

#include <optional>
#include <string>
#include <vector>

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

}  // namespace brindle
