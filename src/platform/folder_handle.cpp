#include "platform/folder_handle.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <linux/openat2.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <utility>

namespace brindle {
namespace {

// The kernel's own record of getdents64(2); the C library's dirent has another layout on some systems.
struct KernelEntry {
  std::uint64_t inode;
  std::int64_t offset;
  unsigned short size;
  unsigned char type;
};
constexpr std::size_t name_offset = 19;  // behind the packed fields above

EntryKind kind_of_type(unsigned char type) {
  switch (type) {
    case DT_REG:
      return EntryKind::file;
    case DT_DIR:
      return EntryKind::folder;
    case DT_LNK:
      return EntryKind::link;
    case DT_UNKNOWN:
      return EntryKind::unknown;
    default:
      return EntryKind::other;
  }
}

EntryKind kind_of_mode(mode_t mode) {
  if (S_ISREG(mode)) return EntryKind::file;
  if (S_ISDIR(mode)) return EntryKind::folder;
  if (S_ISLNK(mode)) return EntryKind::link;
  return EntryKind::other;
}

constexpr int folder_flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
// A folder on the way need not be readable.
constexpr int way_flags = O_PATH | O_DIRECTORY | O_CLOEXEC;

constexpr std::array<std::uint64_t, 11> lasting_inodes = {
    EXT4_SUPER_MAGIC, BTRFS_SUPER_MAGIC,    XFS_SUPER_MAGIC,      F2FS_SUPER_MAGIC,     TMPFS_MAGIC,
    NFS_SUPER_MAGIC,  REISERFS_SUPER_MAGIC, 0x3153464A /* JFS */, 0x2FC12FC1 /* ZFS */, 0xCA451A4E /* bcachefs */,
    0x7366746E /* NTFS */};

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/// How one piece of a path is opened below a folder: a descriptor, or -1 and errno.
using OpenPiece = int (*)(int at, const char* piece, int flags);

int open_piece(int at, const char* piece, int flags) {
  return ::openat(at, piece, flags);
}

int openat2_real(int at, const char* piece, int flags) {
  open_how how{};
  how.flags = static_cast<unsigned>(flags);
  how.resolve = RESOLVE_NO_SYMLINKS;
  return static_cast<int>(::syscall(SYS_openat2, at, piece, &how, sizeof how));
}

// What may not be listed may still be renamed in, by those who know the names.
int open_real_piece(int at, const char* piece, int flags) {
  const int descriptor = openat2_real(at, piece, flags);
  return descriptor < 0 && errno == EACCES ? openat2_real(at, piece, way_flags) : descriptor;
}

// To O_NOFOLLOW with O_DIRECTORY a link is no folder, like a file.
int open_real_component(int at, const char* name, int flags) {
  int descriptor = ::openat(at, name, flags | O_NOFOLLOW);
  if (descriptor < 0 && errno == EACCES) descriptor = ::openat(at, name, way_flags | O_NOFOLLOW);
  struct stat status {};
  if (descriptor >= 0 || errno != ENOTDIR) return descriptor;
  const bool is_link = ::fstatat(at, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode);
  errno = is_link ? ELOOP : ENOTDIR;
  return -1;
}

// Where the piece ends that begins at `begin`: behind at most `most` bytes, at a "/" or at the end of the path.
std::size_t end_of_piece(const std::string& path, std::size_t begin, std::size_t most) {
  if (path.size() - begin <= most) return path.size();
  std::size_t end = path.rfind('/', begin + most);
  if (end == std::string::npos || end <= begin) end = path.find('/', begin + 1);
  return end == std::string::npos ? path.size() : end;
}

// The kernel takes less than PATH_MAX bytes a call: a longer path is walked in pieces of at most so many bytes, each
// with the "/" before it left out.
int open_in_pieces(const std::string& path, std::size_t most, OpenPiece open) {
  FileDescriptor at;
  for (std::size_t begin = 0; begin < path.size();) {
    const std::size_t end = end_of_piece(path, begin, most);
    const std::string piece = path.substr(begin, end - begin);
    const std::size_t next_begin = path.find_first_not_of('/', end);
    const bool is_last = next_begin == std::string::npos;
    const int next = open(at ? at.get() : AT_FDCWD, piece.c_str(), is_last ? folder_flags : way_flags);
    if (next < 0 || is_last) return next;
    at = FileDescriptor(next);
    begin = next_begin;
  }
  errno = ENOENT;
  return -1;
}

constexpr std::size_t longest_piece = PATH_MAX - 1;

ListedEntry listed(const FolderHandle& folder, const FolderEntry& entry) {
  ListedEntry result;
  result.name = entry.name;
  struct stat facts = {};
  if (::fstatat(folder.descriptor(), entry.name.data(), &facts, AT_SYMLINK_NOFOLLOW) != 0) return result;
  result.is_link = S_ISLNK(facts.st_mode);
  // A link that leads nowhere speaks for itself.
  struct stat target = {};
  if (result.is_link && ::fstatat(folder.descriptor(), entry.name.data(), &target, 0) == 0) facts = target;
  result.is_folder = S_ISDIR(facts.st_mode);
  result.size = facts.st_size;
  result.modified = facts.st_mtim.tv_sec;
  return result;
}

}  // namespace

FolderHandle FolderHandle::open(const std::string& path) {
  int descriptor = ::open(path.c_str(), folder_flags);
  if (descriptor < 0 && errno == ENAMETOOLONG) descriptor = open_in_pieces(path, longest_piece, open_piece);
  return FolderHandle(descriptor, descriptor < 0 ? errno : 0);
}

FolderHandle FolderHandle::open_real(const std::string& path) {
  int descriptor = open_in_pieces(path, longest_piece, open_real_piece);
  // Old kernels do not know the call, and some sandboxes forbid it; then the same is done a component at a time.
  const bool is_refused = descriptor < 0 && (errno == ENOSYS || errno == EPERM);
  if (is_refused) descriptor = open_in_pieces(path, 0, open_real_component);
  return FolderHandle(descriptor, descriptor < 0 ? errno : 0);
}

FolderHandle FolderHandle::closed(int error) {
  return FolderHandle(-1, error);
}

FolderHandle FolderHandle::open_child(const char* name) const {
  const int descriptor = open_real_component(folder_.get(), name, folder_flags);
  return FolderHandle(descriptor, descriptor < 0 ? errno : 0);
}

bool FolderHandle::look_up(const char* name, EntryFacts& facts) const {
  struct stat status {};
  if (::fstatat(folder_.get(), name, &status, AT_SYMLINK_NOFOLLOW) != 0) return false;
  facts = {kind_of_mode(status.st_mode), status.st_ino, status.st_dev, status.st_nlink};
  return true;
}

bool FolderHandle::exists(const char* name) const {
  return ::faccessat(folder_.get(), name, F_OK, AT_SYMLINK_NOFOLLOW) == 0;
}

bool FolderHandle::stamp(FolderStamp& stamp) const {
  struct stat status {};
  if (::fstat(folder_.get(), &status) != 0) return false;
  stamp = {status.st_dev, status.st_ino, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
  return true;
}

void FolderHandle::sync() const {
  ::fsync(folder_.get());
}

bool FolderHandle::identity(FolderIdentity& identity) const {
  struct stat status {};
  if (::fstat(folder_.get(), &status) != 0) return false;
  identity = {status.st_dev, status.st_ino};
  return true;
}

int FolderHandle::rename_access(bool& only_own) const {
  struct stat status {};
  only_own = false;
  if (::faccessat(folder_.get(), ".", W_OK | X_OK, AT_EACCESS) != 0) return errno;
  if (::fstat(folder_.get(), &status) != 0) return errno;
  only_own = (status.st_mode & S_ISVTX) != 0 && ::geteuid() != 0 && status.st_uid != ::geteuid();
  return 0;
}

bool FolderHandle::is_own(const char* name) const {
  struct stat status {};
  return ::fstatat(folder_.get(), name, &status, AT_SYMLINK_NOFOLLOW) == 0 && status.st_uid == ::geteuid();
}

bool FolderHandle::has_lasting_inodes() const {
  struct statfs disk {};
  if (::fstatfs(folder_.get(), &disk) != 0) return false;
  const auto type = static_cast<std::uint64_t>(disk.f_type) & 0xFFFFFFFFU;
  return std::find(lasting_inodes.begin(), lasting_inodes.end(), type) != lasting_inodes.end();
}

bool FolderHandle::tells_case_apart() const {
  constexpr std::array<std::uint32_t, 8> exact = {EXT4_SUPER_MAGIC,      XFS_SUPER_MAGIC,  BTRFS_SUPER_MAGIC,
                                                  TMPFS_MAGIC,           F2FS_SUPER_MAGIC, NFS_SUPER_MAGIC,
                                                  OVERLAYFS_SUPER_MAGIC, RAMFS_MAGIC};
  constexpr std::uint32_t casefold_flag = 0x40000000;  // FS_CASEFOLD_FL: ext4, f2fs and tmpfs folders can ignore case
  struct statfs disk {};
  if (::fstatfs(descriptor(), &disk) != 0) return false;
  if (std::ranges::find(exact, static_cast<std::uint32_t>(disk.f_type)) == exact.end()) return false;
  int flags = 0;
  return ::ioctl(descriptor(), FS_IOC_GETFLAGS, &flags) != 0 ||
         (static_cast<std::uint32_t>(flags) & casefold_flag) == 0;
}

std::size_t FolderHandle::name_limit() const {
  struct statvfs disk {};
  if (::fstatvfs(folder_.get(), &disk) != 0 || disk.f_namemax == 0) return NAME_MAX;
  return disk.f_namemax;
}

FolderReader::FolderReader() : buffer_(std::make_unique_for_overwrite<char[]>(buffer_size)) {}

void FolderReader::start(const FolderHandle& folder) {
  descriptor_ = folder.descriptor();
  position_ = filled_ = 0;
  error_ = 0;
  ::lseek(descriptor_, 0, SEEK_SET);
}

bool FolderReader::fill() {
  const long bytes = ::syscall(SYS_getdents64, descriptor_, buffer_.get(), buffer_size);
  error_ = bytes >= 0 ? 0 : errno == EBADF ? EACCES : errno;  // opened without the right to list it
  filled_ = bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
  position_ = 0;
  return bytes > 0;
}

bool FolderReader::next(FolderEntry& entry) {
  for (;;) {
    if (position_ >= filled_ && !fill()) return false;
    KernelEntry record{};
    const char* start = buffer_.get() + position_;
    std::memcpy(&record, start, name_offset);
    position_ += record.size;
    const std::string_view name(start + name_offset);
    if (name == "." || name == "..") continue;
    entry = {name, record.inode, kind_of_type(record.type)};
    return true;
  }
}

FolderListing list_folder(const std::string& folder, const std::atomic<bool>& cancelled) {
  FolderListing listing;
  listing.folder = folder;
  const FolderHandle handle = FolderHandle::open(folder);
  listing.error = handle.error();
  if (!handle) return listing;
  FolderReader reader;
  reader.start(handle);
  for (FolderEntry entry; !cancelled && reader.next(entry);) listing.entries.push_back(listed(handle, entry));
  listing.error = reader.error();
  return listing;
}

}  // namespace brindle
