#include "platform/disk_sync.h"

#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

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

}  // namespace brindle
