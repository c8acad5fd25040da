#include "platform/disks.h"

#include <linux/magic.h>
#include <mntent.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/atomic_file.h"
#include "platform/folder_handle.h"
#include "platform/path.h"

namespace brindle {
namespace {

constexpr std::uint64_t xfs_magic = 0x58465342;

// These write their journal in order: a folder that is on the disk has all earlier renames before it there.
bool keeps_order(int descriptor) {
  struct statfs disk {};
  if (::fstatfs(descriptor, &disk) != 0) return false;
  const auto type = static_cast<std::uint64_t>(disk.f_type) & 0xFFFFFFFFU;
  return type == EXT4_SUPER_MAGIC || type == xfs_magic;
}

int sync_disk_of(const FolderHandle& folder) {
  const int descriptor = folder.descriptor();
  if ((keeps_order(descriptor) ? ::fsync(descriptor) : ::syncfs(descriptor)) == 0) return 0;
  // A folder that may be renamed in and not be read cannot be asked to sync its disk.
  if (errno == EBADF) {
    ::sync();
    return 0;
  }
  // Disks that cannot be told to sync order their changes themselves.
  return errno == EINVAL || errno == ENOTSUP || errno == ENOSYS || errno == EROFS ? 0 : errno;
}

struct MountRoot {
  std::string_view folder;
  int depth;  // how many names below it a disk's mount point lies
};
constexpr auto mount_roots =
    std::to_array<MountRoot>({{"/run/media/", 2}, {"/media/", 2}, {"/media/", 1}, {"/mnt/", 1}});

// The path as far as the name `depth` names below the root; empty when it does not reach there.
std::string mount_point_below(const MountRoot& root, const std::string& path) {
  if (!path.starts_with(root.folder)) return {};
  std::size_t end = root.folder.size() - 1;
  for (int i = 0; i < root.depth && end != std::string::npos; ++i) end = path.find('/', end + 1);
  return end == std::string::npos ? std::string() : path.substr(0, end);
}

std::vector<std::string> mount_points_above(const std::string& path) {
  std::vector<std::string> found;
  for (const MountRoot& root : mount_roots) {
    if (std::string point = mount_point_below(root, path); !point.empty()) found.push_back(std::move(point));
  }
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> table(::setmntent("/etc/fstab", "re"), &::endmntent);
  mntent entry{};
  std::array<char, 4096> texts{};
  while (table && ::getmntent_r(table.get(), &entry, texts.data(), static_cast<int>(texts.size())) != nullptr) {
    const std::string point = entry.mnt_dir;
    if (point.size() > 1 && point.front() == '/' && path.starts_with(point + "/")) found.push_back(point);
  }
  return found;
}

bool is_empty_folder(const std::string& path) {
  const FolderHandle folder = FolderHandle::open(path);
  FolderReader reader;
  FolderEntry entry;
  if (folder) reader.start(folder);
  return folder && !reader.next(entry) && reader.error() == 0;
}

// A mount point without its disk is missing, or an empty folder of the disk above it.
bool lacks_disk(const std::string& mount_point) {
  struct stat here {};
  struct stat above {};
  if (::stat(mount_point.c_str(), &here) != 0) return true;
  if (::stat(split_path(mount_point).folder.c_str(), &above) != 0) return true;
  return here.st_dev == above.st_dev && is_empty_folder(mount_point);
}

}  // namespace

void TouchedDisks::keep(FolderHandle folder) {
  FolderStamp stamp;
  if (folder && folder.stamp(stamp)) folders_.insert_or_assign(stamp.device, std::move(folder));
}

int TouchedDisks::sync() const {
  int first = 0;
  for (const auto& [device, folder] : folders_) {
    const int error = sync_disk_of(folder);
    if (first == 0) first = error;
  }
  return first;
}

bool lies_on_missing_disk(const std::string& path) {
  const std::vector<std::string> points = mount_points_above(path);
  return std::any_of(points.begin(), points.end(), lacks_disk);
}

}  // namespace brindle
