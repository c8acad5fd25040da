#include "gather/gather.h"

#include <cerrno>
#include <cstring>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "list/open_folder.h"
#include "platform/file_kind.h"
#include "platform/folder_handle.h"
#include "platform/real_path.h"

namespace brindle {
namespace {

/// What one entry of a folder is to the walk.
struct EntryKindBits {
  std::uint8_t bits = 0;
  bool is_real_folder = false;  // a folder that is neither link nor package: the only thing that is ever entered
};

bool is_entered(const FileKind& kind) {
  return kind.is_folder && !kind.is_alias && !kind.is_package;
}

EntryKindBits kind_of(const FolderHandle& folder, const FolderEntry& entry) {
  if (entry.kind == EntryKind::folder) return {kind_bits(true, false), !is_package_name(entry.name)};
  if (entry.kind != EntryKind::link && entry.kind != EntryKind::unknown) return {};
  const FileKind kind = file_kind(folder, entry.name.data());
  return {kind_bits(kind.is_folder, kind.is_alias), is_entered(kind)};
}

bool is_hidden(std::string_view name) {
  return name.starts_with('.');
}

// The rest of a folder's listing, packed, while a subfolder in the middle of it is walked.
class PendingEntries {
 public:
  void push(std::string_view name, EntryKindBits kind, std::uint64_t inode) {
    const Head head{inode, static_cast<std::uint16_t>(name.size()), kind};
    bytes_.append(reinterpret_cast<const char*>(&head), sizeof head);
    bytes_.append(name).push_back('\0');
  }
  bool pop(std::string_view& name, EntryKindBits& kind, std::uint64_t& inode) {
    if (position_ == bytes_.size()) return false;
    Head head;
    std::memcpy(&head, bytes_.data() + position_, sizeof head);
    name = std::string_view(bytes_).substr(position_ + sizeof head, head.name_size);
    kind = head.kind;
    inode = head.inode;
    position_ += sizeof head + head.name_size + 1;
    return true;
  }

 private:
  struct Head {
    std::uint64_t inode = 0;
    std::uint16_t name_size = 0;
    EntryKindBits kind;
  };
  std::string bytes_;
  std::size_t position_ = 0;
};

class Walk {
 public:
  Walk(FileList& files, const GatherOptions& options, DiskNames* disk_names, const JobControl& control)
      : files_(files), options_(options), disk_names_(disk_names), control_(control), throttle_(control) {}

  /// `given` (may be null) is told the real paths.
  GatherResult run(std::span<const std::string> paths, std::vector<std::string>* given) {
    RealPaths real_paths(options_.current_folder);
    for (const std::string& path : paths) {
      if (stop()) break;
      RealPath real = real_paths.of(path);
      if (real.error != 0) {
        note_unreadable(files_.folders().intern(real.path), real.error);
      } else {
        add_path(real.path);
        if (given != nullptr) given->push_back(std::move(real.path));
      }
    }
    throttle_.finish(result_.searchFilesCount);
    return std::move(result_);
  }

 private:
  /// A folder that is being walked.
  struct Level {
    FileList::Listing listing;
    PendingEntries rest;
  };

  bool stop() {
    result_.cancelled = result_.cancelled || control_.cancelled();
    return result_.cancelled;
  }

  void count(bool accepted) {
    if (!accepted) return;
    ++result_.searchFilesCount;
    if (options_.renames_from_list) files_.set_status(files_.size() - 1, ItemStatus::no_changes);
    throttle_.step(result_.searchFilesCount, [this] { return files_.path(files_.size() - 1); });
  }

  void note_unreadable(FolderId path, int error) { result_.unreadable.push_back({path, error}); }
  void add_path(const std::string& path);
  int look_at(FolderId parent, std::string_view name, FileKind& kind);
  void walk_below(FolderId top);
  void list(FolderId folder);
  bool admit(const Level& level, std::string_view name, EntryKindBits kind, std::uint64_t inode);

  FileList& files_;
  const GatherOptions& options_;
  DiskNames* disk_names_;
  const JobControl& control_;
  ProgressThrottle throttle_;
  FolderReader reader_;
  OpenFolder open_;
  std::vector<Level> levels_;  // the way down to the folder at hand
  GatherResult result_;
};

void Walk::add_path(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string_view name = std::string_view(path).substr(slash + 1);
  if (is_hidden(name) && !options_.include_hidden) {
    result_.hidden_paths.push_back(path);
    return;
  }
  if (name.empty()) {  // the root is nobody's item
    if (options_.isIncludeSubFolders) walk_below(FolderTable::root);
    return;
  }
  const FolderId parent = files_.folders().intern(std::string_view(path).substr(0, slash));
  FileKind kind;
  const int error = look_at(parent, name, kind);
  const bool is_missing_file = error == ENOENT && !options_.isFolders;
  if (error != 0 && !is_missing_file) return note_unreadable(files_.folders().child(parent, name), error);
  const bool is_real_folder = is_entered(kind);
  if (is_real_folder == options_.isFolders)
    count(files_.add(parent, name, kind_bits(kind.is_folder, kind.is_alias), kind.inode));
  if (is_real_folder && options_.isIncludeSubFolders) walk_below(files_.folders().child(parent, name));
}

// What a given path is, in its folder as it was listed; or errno.
int Walk::look_at(FolderId parent, std::string_view name, FileKind& kind) {
  FolderTable& folders = files_.folders();
  open_.open(folders, parent);
  const FolderHandle& folder = open_.handle();
  if (!folder) return folder.error() == ENOTDIR ? ENOENT : folder.error();
  FolderIdentity identity;
  if (!folders.identity(parent) && folder.identity(identity)) folders.set_identity(parent, identity);
  kind = file_kind(folder, name.data());
  return kind.exists ? 0 : errno;
}

// In the order of the listings, a subfolder's contents where the subfolder stands, and without recursion.
void Walk::walk_below(FolderId top) {
  list(top);
  while (!levels_.empty() && !stop()) {
    std::string_view name;
    EntryKindBits kind;
    std::uint64_t inode = 0;
    Level& level = levels_.back();
    if (!level.rest.pop(name, kind, inode)) {
      levels_.pop_back();
    } else if (admit(level, name, kind, inode)) {
      list(files_.folders().child(level.listing.folder, name));
    }
  }
  levels_.clear();
}

// Takes one entry into the list if it is of the wanted kind. True when it is a folder to enter.
bool Walk::admit(const Level& level, std::string_view name, EntryKindBits kind, std::uint64_t inode) {
  if (kind.is_real_folder == options_.isFolders) count(files_.add_listed(level.listing, name, kind.bits, inode));
  return kind.is_real_folder;
}

// Reads a folder to its end, at once: what comes before the first subfolder goes straight into the list, the rest
// waits.
void Walk::list(FolderId folder) {
  open_.open_to_list(files_.folders(), folder);
  const FolderHandle& handle = open_.handle();
  FolderIdentity identity;
  if (!handle || !handle.identity(identity)) return note_unreadable(folder, handle ? errno : handle.error());
  files_.folders().set_identity(folder, identity);
  Level level{files_.begin_listing(folder), {}};
  bool has_rest = false;
  if (disk_names_ != nullptr) disk_names_->begin_listing(folder, handle);
  FolderEntry entry;
  for (reader_.start(handle); reader_.next(entry) && !stop();) {
    if (disk_names_ != nullptr) disk_names_->add_listed(entry.name);
    if (is_hidden(entry.name) && !options_.include_hidden) continue;
    const EntryKindBits kind = kind_of(handle, entry);
    has_rest = has_rest || kind.is_real_folder;
    if (has_rest) {
      level.rest.push(entry.name, kind, entry.inode);
    } else {
      admit(level, entry.name, kind, entry.inode);
    }
  }
  if (reader_.error() != 0) note_unreadable(folder, reader_.error());
  if (disk_names_ != nullptr && !stop() && reader_.error() == 0) disk_names_->end_listing();
  if (has_rest) levels_.push_back(std::move(level));
}

}  // namespace

GatherResult addFilesToList(FileList& files, std::span<const std::string> paths, const GatherOptions& options,
                            DiskNames* disk_names, const JobControl& control) {
  return Walk(files, options, disk_names, control).run(paths, nullptr);
}

GatherResult addFiles(FileList& files, std::span<const std::string> paths, const GatherOptions& options,
                      DiskNames* disk_names, const JobControl& control) {
  const bool given_ones_leave = options.isFolders && options.isIncludeSubFolders;
  if (!given_ones_leave) return addFilesToList(files, paths, options, disk_names, control);
  std::vector<std::string> given;
  GatherResult result = Walk(files, options, disk_names, control).run(paths, &given);
  if (result.searchFilesCount == 0) return result;
  // Who chose a folder with its subfolders means what is in it, not the folder itself.
  const std::unordered_set<std::string_view> given_paths(given.begin(), given.end());
  std::unordered_set<std::string_view> given_names;  // few items bear one: only theirs is the whole path made
  for (const std::string& path : given) given_names.insert(std::string_view(path).substr(path.rfind('/') + 1));
  files.remove_if([&](const ItemRecord& record) {
    if (!given_names.contains(record.name())) return false;
    std::string path = files.folders().path(record.folder);
    if (path.back() != '/') path.push_back('/');
    return given_paths.contains(path.append(record.name()));
  });
  return result;
}

}  // namespace brindle
