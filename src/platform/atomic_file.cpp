#include "platform/atomic_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/folder_handle.h"
#include "platform/move.h"

namespace brindle {
namespace {

bool is_still_empty(int descriptor, const std::string& path) {
  struct stat made {};
  struct stat there {};
  return ::fstat(descriptor, &made) == 0 && ::lstat(path.c_str(), &there) == 0 && made.st_size == 0 &&
         made.st_ino == there.st_ino && made.st_dev == there.st_dev;
}

// For disks that know neither RENAME_NOREPLACE nor hard links: the empty file that rename(2) replaces is our own, and
// nobody has written to it.
int place_on_own_file(const std::string& from, const std::string& to) {
  const int descriptor = ::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor < 0) return errno;
  const bool is_ours = is_still_empty(descriptor, to);
  ::close(descriptor);
  if (!is_ours) return EEXIST;
  if (::rename(from.c_str(), to.c_str()) == 0) return 0;
  const int error = errno;
  ::unlink(to.c_str());
  return error;
}

// A name that no other writer uses, short enough for every disk.
std::string unique_name_beside(const std::string& path) {
  std::uint64_t number = 0;
  if (::getrandom(&number, sizeof number, 0) < 0) number = static_cast<std::uint64_t>(::getpid());
  return fmt::format("{}/.brindle-{:016x}.tmp", split_path(path).folder, number);
}

std::string resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
  return real == nullptr ? path : std::string(real.get());
}

}  // namespace

AtomicFile::AtomicFile(AtomicFile&& other) noexcept
    : temporary_path_(std::move(other.temporary_path_)),
      path_(std::move(other.path_)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      error_(other.error_) {}

AtomicFile& AtomicFile::operator=(AtomicFile&& other) noexcept {
  std::swap(temporary_path_, other.temporary_path_);
  std::swap(path_, other.path_);
  std::swap(descriptor_, other.descriptor_);
  std::swap(error_, other.error_);
  return *this;
}

AtomicFile::~AtomicFile() {
  discard();
}

int AtomicFile::open(const std::string& temporary_path) {
  discard();
  if (::unlink(temporary_path.c_str()) != 0 && errno != ENOENT) return errno;
  descriptor_ = ::open(temporary_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
  if (descriptor_ < 0) return errno;
  temporary_path_ = temporary_path;
  error_ = 0;
  return 0;
}

int AtomicFile::open_for(const std::string& path) {
  path_ = resolved(path);
  const int error = open(unique_name_beside(path_));
  struct stat old {};
  if (error == 0 && ::stat(path_.c_str(), &old) == 0) set_permissions(old.st_mode & 07777U);
  return error;
}

void AtomicFile::write(std::string_view bytes) {
  if (error_ == 0) error_ = descriptor_ < 0 ? EBADF : write_all(descriptor_, bytes);
}

void AtomicFile::set_permissions(unsigned mode) {
  // A disk without permissions (FAT) may refuse; the content is what matters.
  if (::fchmod(descriptor_, mode) != 0) return;
}

int AtomicFile::sync() {
  if (error_ == 0 && ::fsync(descriptor_) != 0) error_ = errno;
  return error_;
}

int AtomicFile::place_exclusively(const std::string& path) {
  const PathParts from = split_path(temporary_path_);
  const PathParts to = split_path(path);
  const FolderHandle from_folder = FolderHandle::open(from.folder);
  const FolderHandle to_folder = FolderHandle::open(to.folder);
  if (!from_folder || !to_folder) return from_folder ? to_folder.error() : from_folder.error();
  int error = move_exclusively(from_folder, from.name.c_str(), to_folder, to.name.c_str());
  if (error == ENOTSUP) error = place_on_own_file(temporary_path_, path);
  if (error == 0) close();
  return error == 0 ? sync_folder_of(path) : error;
}

int AtomicFile::place_over(const std::string& path) {
  if (::rename(temporary_path_.c_str(), path.c_str()) != 0) return errno;
  close();
  return sync_folder_of(path);
}

int AtomicFile::place() {
  const int error = sync();
  return error != 0 ? error : place_over(path_);
}

void AtomicFile::discard() {
  if (descriptor_ < 0) return;
  ::unlink(temporary_path_.c_str());
  close();
}

void AtomicFile::close() {
  ::close(std::exchange(descriptor_, -1));
  temporary_path_.clear();
}

int write_all(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return written < 0 ? errno : EIO;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

int write_new_file(const std::string& path, std::string_view bytes, unsigned mode) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
  if (descriptor < 0) return errno;
  int error = write_all(descriptor, bytes);
  if (::close(descriptor) != 0 && error == 0) error = errno;
  if (error != 0) ::unlink(path.c_str());
  return error;
}

std::string write_file_atomically(const std::string& path, std::string_view content) {
  AtomicFile file;
  int error = file.open_for(path);
  file.write(content);
  if (error == 0) error = file.place();
  return error == 0 ? std::string() : fmt::format("“{}” cannot be written: {}", path, system_error_text(error));
}

FileReader::~FileReader() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

int FileReader::open(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return EINVAL;  // opening a device can do things
  descriptor_ = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0) return errno;
  size_ = static_cast<std::size_t>(status.st_size);
  return S_ISREG(status.st_mode) ? 0 : EINVAL;
}

std::size_t FileReader::read(char* buffer, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size && error_ == 0) {
    const ssize_t got = ::read(descriptor_, buffer + filled, size - filled);
    if (got == 0) break;
    if (got > 0) filled += static_cast<std::size_t>(got);
    if (got < 0 && errno != EINTR) error_ = errno;
  }
  return filled;
}

int read_regular_file(const std::string& path, std::size_t limit, std::string& content) {
  FileReader file;
  const int error = file.open(path);
  if (error != 0) return error;
  if (file.size() > limit) return EFBIG;
  content.resize(file.size());
  content.resize(file.read(content.data(), content.size()));
  return file.error();
}

int sync_folder_of(const std::string& path) {
  const int descriptor = ::open(split_path(path).folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return errno;
  // Some network and FUSE disks cannot sync a folder; they order their changes themselves.
  const int error = ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS ? 0 : errno;
  ::close(descriptor);
  return error;
}

PathParts split_path(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return {".", std::string(path)};
  return {std::string(path.substr(0, std::max<std::size_t>(slash, 1))), std::string(path.substr(slash + 1))};
}

std::string system_error_text(int error) {
  return std::generic_category().message(error);
}

}  // namespace brindle
