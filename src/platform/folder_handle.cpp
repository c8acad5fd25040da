#include "platform/folder_handle.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <unistd.h>

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

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

// The kernel takes at most PATH_MAX bytes a call: a longer path is walked in pieces that end at a "/".
int open_in_pieces(const std::string& path) {
  int at = AT_FDCWD;
  for (std::size_t begin = 0; begin < path.size();) {
    std::size_t end = path.size();
    if (end - begin >= PATH_MAX) end = path.rfind('/', begin + PATH_MAX - 1);
    if (end == std::string::npos || end <= begin) end = path.size();
    const int next = ::openat(at, path.substr(begin, end - begin).c_str(), folder_flags);
    const int error = errno;
    if (at != AT_FDCWD) ::close(at);
    errno = error;
    if (next < 0) return -1;
    at = next;
    begin = end + 1;
  }
  return at;
}

}  // namespace

FolderHandle::FolderHandle(FolderHandle&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), error_(other.error_) {}

FolderHandle& FolderHandle::operator=(FolderHandle&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(error_, other.error_);
  return *this;
}

FolderHandle::~FolderHandle() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

FolderHandle FolderHandle::open(const std::string& path) {
  int descriptor = ::open(path.c_str(), folder_flags);
  if (descriptor < 0 && errno == ENAMETOOLONG) descriptor = open_in_pieces(path);
  return FolderHandle(descriptor, descriptor < 0 ? errno : 0);
}

FolderHandle FolderHandle::open_child(const char* name) const {
  const int descriptor = ::openat(descriptor_, name, folder_flags | O_NOFOLLOW);
  return FolderHandle(descriptor, descriptor < 0 ? errno : 0);
}

bool FolderHandle::look_up(const char* name, EntryFacts& facts) const {
  struct stat status {};
  if (::fstatat(descriptor_, name, &status, AT_SYMLINK_NOFOLLOW) != 0) return false;
  facts = {kind_of_mode(status.st_mode), status.st_ino, status.st_dev, status.st_nlink};
  return true;
}

bool FolderHandle::exists(const char* name) const {
  return ::faccessat(descriptor_, name, F_OK, AT_SYMLINK_NOFOLLOW) == 0;
}

bool FolderHandle::stamp(FolderStamp& stamp) const {
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0) return false;
  stamp = {status.st_dev, status.st_ino, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
  return true;
}

std::size_t FolderHandle::name_limit() const {
  struct statvfs disk {};
  if (::fstatvfs(descriptor_, &disk) != 0 || disk.f_namemax == 0) return NAME_MAX;
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
  error_ = bytes < 0 ? errno : 0;
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

}  // namespace brindle
