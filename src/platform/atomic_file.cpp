#include "platform/atomic_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <system_error>
#include <utility>

#include "platform/move.h"
#include "platform/path.h"
#include "platform/translation.h"

namespace brindle {
namespace {

bool is_still_empty(int descriptor, const WriteTarget& place) {
  struct stat made {};
  struct stat there {};
  return ::fstat(descriptor, &made) == 0 &&
         ::fstatat(place.folder.descriptor(), place.name.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0 &&
         made.st_size == 0 && made.st_ino == there.st_ino && made.st_dev == there.st_dev;
}

// For disks that know neither RENAME_NOREPLACE nor hard links: the empty file that rename(2) replaces is our own, and
// nobody has written to it.
int place_on_own_file(const WriteTarget& from, const WriteTarget& to) {
  const int to_folder = to.folder.descriptor();
  FileDescriptor made(::openat(to_folder, to.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, private_file_mode));
  if (!made) return errno;
  const bool is_ours = is_still_empty(made.get(), to);
  made.close();
  if (!is_ours) return EEXIST;
  if (::renameat(from.folder.descriptor(), from.name.c_str(), to_folder, to.name.c_str()) == 0) return 0;
  const int error = errno;
  ::unlinkat(to_folder, to.name.c_str(), 0);
  return error;
}

// A name that no other writer uses, short enough for every disk.
std::string unique_name() {
  std::uint64_t number = 0;
  if (::getrandom(&number, sizeof number, 0) < 0) number = static_cast<std::uint64_t>(::getpid());
  return fmt::format(".brindle-{:016x}.tmp", number);
}

// Some network and FUSE disks cannot sync a folder; they order their changes themselves.
int sync_folder(int descriptor) {
  return ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS ? 0 : errno;
}

WriteTarget target_at(const std::string& path) {
  PathParts parts = split_path(path);
  return {FolderHandle::open(parts.folder), std::move(parts.name)};
}

constexpr unsigned all_permissions = 0777;  // never the bits that lend a program its owner's rights

// The permissions of a file of ours that is replaced. Where its group cannot be kept, the group's rights are
// everybody's.
void hand_on_permissions(const struct stat& old, int descriptor) {
  unsigned mode = old.st_mode & all_permissions;
  struct stat made {};
  const bool same_group = ::fstat(descriptor, &made) == 0 && made.st_gid == old.st_gid;
  const auto no_change = static_cast<uid_t>(-1);
  if (!same_group && ::fchown(descriptor, no_change, old.st_gid) != 0) mode = (mode & 0707U) | (mode & 07U) << 3U;
  // A disk without permissions (FAT) may refuse; the content is what matters.
  if (::fchmod(descriptor, mode) != 0) return;
}

bool may_follow(const FolderHandle& folder, const struct stat& link) {
  struct stat around {};
  if (::fstat(folder.descriptor(), &around) != 0) return false;
  const bool is_shared = (around.st_mode & (S_IWGRP | S_IWOTH)) != 0;
  return !is_shared || link.st_uid == ::geteuid() || link.st_uid == around.st_uid;
}

}  // namespace

int find_write_target(const std::string& path, WriteTarget& target) {
  std::string next = path;
  for (int links = 0; links <= most_links; ++links) {
    PathParts parts = split_path(next);
    if (parts.name.empty()) return EISDIR;
    target = {FolderHandle::open(parts.folder), std::move(parts.name)};
    if (!target.folder) return target.folder.error();
    struct stat status {};
    const int found = ::fstatat(target.folder.descriptor(), target.name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
    if (found != 0) return errno == ENOENT ? 0 : errno;
    if (!S_ISLNK(status.st_mode)) return 0;
    if (!may_follow(target.folder, status)) return foreign_link_error;
    if (const int error = read_link(target.folder.descriptor(), target.name.c_str(), next); error != 0) return error;
    if (!next.starts_with('/')) next = join_path(parts.folder, next);
  }
  return ELOOP;
}

void AtomicFile::give_up() {
  if (is_reserved_) leave();
  discard();
}

int AtomicFile::make(WriteTarget temporary, unsigned mode) {
  const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  file_ = FileDescriptor(::openat(temporary.folder.descriptor(), temporary.name.c_str(), flags, mode));
  if (!file_) return errno;
  temporary_ = std::move(temporary);
  error_ = 0;
  is_reserved_ = false;
  written_ = 0;
  return 0;
}

int AtomicFile::open(const std::string& temporary_path) {
  discard();
  WriteTarget temporary = target_at(temporary_path);
  if (!temporary.folder) return temporary.folder.error();
  if (::unlinkat(temporary.folder.descriptor(), temporary.name.c_str(), 0) != 0 && errno != ENOENT) return errno;
  return make(std::move(temporary), private_file_mode);
}

int AtomicFile::take_over(const std::string& temporary_path) {
  discard();
  WriteTarget temporary = target_at(temporary_path);
  if (!temporary.folder) return temporary.folder.error();
  constexpr int flags = O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  file_ = FileDescriptor(::openat(temporary.folder.descriptor(), temporary.name.c_str(), flags));
  struct stat status {};
  const bool is_ours = file_ && ::fstat(file_.get(), &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1 &&
                       status.st_uid == ::geteuid();
  if (!is_ours) {
    leave();
    return open(temporary_path);
  }
  temporary_ = std::move(temporary);
  error_ = 0;
  is_reserved_ = true;
  written_ = 0;
  return 0;
}

int AtomicFile::reserve(std::uint64_t size) {
  is_reserved_ = true;
  return ::posix_fallocate(file_.get(), 0, static_cast<off_t>(std::max<std::uint64_t>(size, 1)));
}

int AtomicFile::open_for(const std::string& path) {
  WriteTarget target;
  const int error = find_write_target(path, target);
  return error == 0 ? open_for(std::move(target)) : error;
}

// Nobody may look into the new file before it is as closed as the old one.
int AtomicFile::open_for(WriteTarget target) {
  discard();
  struct stat old {};
  const bool replaces = ::fstatat(target.folder.descriptor(), target.name.c_str(), &old, AT_SYMLINK_NOFOLLOW) == 0;
  const bool is_ours = replaces && S_ISREG(old.st_mode) && old.st_uid == ::geteuid();
  const unsigned mode = !replaces ? 0666U : is_ours ? private_file_mode : (old.st_mode & 0666U) | private_file_mode;
  name_ = std::exchange(target.name, unique_name());
  const int error = make(std::move(target), mode);
  if (error == 0 && is_ours) hand_on_permissions(old, file_.get());
  return error;
}

void AtomicFile::write(std::string_view bytes) {
  if (error_ == 0) error_ = file_ ? write_all(file_.get(), bytes) : EBADF;
  if (error_ == 0) written_ += bytes.size();
}

int AtomicFile::sync() {
  if (error_ == 0 && is_reserved_ && ::ftruncate(file_.get(), static_cast<off_t>(written_)) != 0) error_ = errno;
  if (error_ == 0 && ::fsync(file_.get()) != 0) error_ = errno;
  return error_;
}

int AtomicFile::place_exclusively(const std::string& path) {
  PathParts parts = split_path(path);
  const WriteTarget to{FolderHandle::open(parts.folder), std::move(parts.name)};
  if (!to.folder) return to.folder.error();
  int error = move_exclusively(temporary_.folder, temporary_.name.c_str(), to.folder, to.name.c_str());
  if (error == ENOTSUP) error = place_on_own_file(temporary_, to);
  if (error == 0) leave();
  return error == 0 ? sync_folder(to.folder.descriptor()) : error;
}

int AtomicFile::place() {
  if (const int error = sync(); error != 0) return error;
  const int folder = temporary_.folder.descriptor();
  if (::renameat(folder, temporary_.name.c_str(), folder, name_.c_str()) != 0) return errno;
  const int error = sync_folder(folder);
  leave();
  return error;
}

void AtomicFile::discard() {
  if (!file_) return;
  ::unlinkat(temporary_.folder.descriptor(), temporary_.name.c_str(), 0);
  leave();
}

void AtomicFile::leave() {
  file_.close();
  temporary_ = {};
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
  FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
  if (!file) return errno;
  int error = write_all(file.get(), bytes);
  if (const int late = file.close(); error == 0) error = late;
  if (error != 0) ::unlink(path.c_str());
  return error;
}

Status write_file_atomically(const std::string& path, std::string_view content) {
  AtomicFile file;
  int error = file.open_for(path);
  file.write(content);
  if (error == 0) error = file.place();
  return error == 0
             ? Status()
             : Status(translated("“{}” cannot be written: {}", path, translated(system_error_text(error))), error);
}

int FileReader::open(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return EINVAL;  // opening a device can do things
  file_ = FileDescriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file_ || ::fstat(file_.get(), &status) != 0) return errno;
  size_ = static_cast<std::size_t>(status.st_size);
  return S_ISREG(status.st_mode) ? 0 : EINVAL;
}

std::size_t FileReader::read(char* buffer, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size && error_ == 0) {
    const ssize_t got = ::read(file_.get(), buffer + filled, size - filled);
    if (got == 0) break;
    if (got > 0) filled += static_cast<std::size_t>(got);
    if (got < 0 && errno != EINTR) error_ = errno;
  }
  return filled;
}

Result<std::string> read_regular_file(const std::string& path, std::size_t limit) {
  FileReader file;
  int error = file.open(path);
  if (error == 0 && file.size() > limit) error = EFBIG;
  std::string content;
  if (error == 0) {
    content.resize(file.size());
    content.resize(file.read(content.data(), content.size()));
    error = file.error();
  }
  if (error != 0) return Status(reading_error_text(error, limit), error);
  return content;
}

std::string reading_error_text(int error, std::size_t limit) {
  if (error == EINVAL) return translated("it is no regular file");
  if (error == EFBIG) return translated("it is larger than {} MiB", limit >> 20U);
  return translated(system_error_text(error));
}

int sync_folder_of(const std::string& path) {
  const FileDescriptor folder(::open(split_path(path).folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return folder ? sync_folder(folder.get()) : errno;
}

std::string system_error_text(int error) {
  if (error == foreign_link_error) {
    return std::string(to_translate(
        "it is another user's link, in a folder that others may write in; name the file that it leads to"));
  }
  if (error == ENOLCK)
    return std::string(to_translate("its disk has no file locks; a folder on another disk is needed"));
  return std::generic_category().message(error);
}

}  // namespace brindle
