#include "log/undo_progress.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/data_folders.h"
#include "platform/folder_handle.h"
#include "platform/path.h"
#include "platform/translation.h"

namespace brindle {
namespace {

struct ProgressHeader {
  std::array<char, 8> magic = {'b', 'r', 'i', 'n', 'u', 'n', 'd', '2'};
  std::uint64_t log_checksum = 0;
  std::uint64_t entries = 0;
  UndoEnd end = UndoEnd::open;
  std::array<char, 39> unused{};

  bool is_of_same_log(const ProgressHeader& other) const {
    return magic == other.magic && log_checksum == other.log_checksum && entries == other.entries;
  }
};
static_assert(sizeof(ProgressHeader) == 64);

std::uint64_t marks_offset() {
  return static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

bool read_header(int descriptor, ProgressHeader& header) {
  std::array<char, sizeof header> bytes{};
  if (::pread(descriptor, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) return false;
  std::memcpy(&header, bytes.data(), bytes.size());
  return true;
}

bool write_header(int descriptor, const ProgressHeader& header) {
  return ::pwrite(descriptor, &header, sizeof header, 0) == static_cast<ssize_t>(sizeof header);
}

std::size_t count_restored(int descriptor, std::uint64_t entries) {
  std::size_t restored = 0;
  std::array<char, 65536> marks{};
  for (std::uint64_t at = 0; at < entries;) {
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(marks.size(), entries - at));
    const ssize_t got = ::pread(descriptor, marks.data(), wanted, static_cast<off_t>(marks_offset() + at));
    if (got <= 0) break;
    restored +=
        static_cast<std::size_t>(std::count(marks.begin(), marks.begin() + got, static_cast<char>(UndoMark::restored)));
    at += static_cast<std::uint64_t>(got);
  }
  return restored;
}

std::string path_in_data_folder(std::uint64_t log_checksum) {
  if (!createApplicationUsersFolder("").ok()) return {};
  return fmt::format("{}/{:016x}.undo", getAppPath(), log_checksum);
}

}  // namespace

std::string undo_progress_path(const std::string& log_path) {
  return log_path + ".undo";
}

void UndoProgress::close_file() {
  marks_.release();
  file_.close();
}

// Over a network only a file open for writing can be locked.
Status UndoProgress::lock(const std::string& log_path) {
  constexpr int flags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  log_ = FileDescriptor(::open(log_path.c_str(), O_RDWR | flags));
  if (!log_) log_ = FileDescriptor(::open(log_path.c_str(), O_RDONLY | flags));
  struct stat opened {};
  struct stat named {};
  int error = !log_ || ::flock(log_.get(), LOCK_EX | LOCK_NB) != 0 ? errno : 0;
  if (error == EWOULDBLOCK) return Status(translated("“{}” is just being undone by another process", log_path), error);
  if (error == 0 && (::fstat(log_.get(), &opened) != 0 || ::lstat(log_path.c_str(), &named) != 0)) error = errno;
  // The undo that held it has just come to its end, and put it away.
  if (error == 0 && (opened.st_ino != named.st_ino || opened.st_dev != named.st_dev)) error = ENOENT;
  if (error == 0) return {};
  return Status(
      translated("“{}” cannot be locked, and nothing was undone: {}", log_path, translated(system_error_text(error))),
      error);
}

Status UndoProgress::open(const std::string& log_path, std::uint64_t log_checksum, std::size_t entries) {
  if (Status status = lock(log_path); !status.ok()) return status;
  for (const std::string& path : {undo_progress_path(log_path), path_in_data_folder(log_checksum)}) {
    if (!path.empty() && open_file(path) == 0 && adopt_or_begin(log_checksum, entries) == 0) return {};
    close_file();
  }
  unkept_.assign(entries, 0);
  return {};
}

int UndoProgress::open_file(const std::string& path) {
  path_ = path;
  constexpr int flags = O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  file_ = FileDescriptor(::open(path.c_str(), flags, private_file_mode));
  struct stat status {};
  if (!file_ || ::fstat(file_.get(), &status) != 0) return errno;
  // With a second name it may be any file, linked to here by another user.
  return S_ISREG(status.st_mode) && status.st_nlink == 1 ? 0 : EINVAL;
}

int UndoProgress::adopt_or_begin(std::uint64_t log_checksum, std::size_t entries) {
  entries_ = entries;
  ProgressHeader wanted;
  wanted.log_checksum = log_checksum;
  wanted.entries = entries;
  ProgressHeader found;
  goes_on_ = read_header(file_.get(), found) && found.is_of_same_log(wanted);
  end_before_ = goes_on_ ? found.end : UndoEnd::open;
  if (!goes_on_ && ::ftruncate(file_.get(), 0) != 0) return errno;
  if (!goes_on_) MarkMap::exempt_from_copy(file_.get());
  const int error = MarkMap::reserve(file_.get(), marks_offset(), entries);
  // The header comes last: without it, whatever else is there counts for nothing.
  if (error != 0 || !write_header(file_.get(), wanted)) {
    if (!goes_on_) ::unlink(path_.c_str());
    return error == 0 ? EIO : error;
  }
  marks_.use(file_.get(), marks_offset(), entries);
  return 0;
}

UndoMark UndoProgress::get(std::size_t entry) const {
  return static_cast<UndoMark>(file_ ? marks_.get(entry) : unkept_[entry]);
}

void UndoProgress::set(std::size_t entry, UndoMark mark) {
  if (file_) {
    marks_.set(entry, static_cast<std::uint8_t>(mark));
  } else {
    unkept_[entry] = static_cast<std::uint8_t>(mark);
  }
}

// Behind the marks, 8 bytes for each entry; what nobody asked for takes no space.
std::uint64_t UndoProgress::inodes_offset(std::size_t entry) const {
  return (marks_offset() + entries_ + 7) / 8 * 8 + std::uint64_t{8} * entry;
}

int UndoProgress::keep_inodes(std::size_t first, std::span<const std::uint64_t> inodes) {
  if (!file_) return ENOSPC;
  const auto size = static_cast<ssize_t>(inodes.size_bytes());
  const ssize_t written =
      ::pwrite(file_.get(), inodes.data(), inodes.size_bytes(), static_cast<off_t>(inodes_offset(first)));
  if (written != size) return written < 0 ? errno : ENOSPC;
  if (::fdatasync(file_.get()) != 0) return errno;
  if (is_durable_) return 0;
  const int error = sync_folder_of(path_);
  is_durable_ = error == 0;
  return error;
}

std::vector<std::uint64_t> UndoProgress::kept_inodes(std::size_t first, std::size_t count) const {
  std::vector<std::uint64_t> inodes(count);
  const std::size_t size = count * sizeof inodes.front();
  const bool read = file_ && ::pread(file_.get(), inodes.data(), size, static_cast<off_t>(inodes_offset(first))) ==
                                 static_cast<ssize_t>(size);
  if (!read || std::ranges::find(inodes, 0U) != inodes.end()) return {};
  return inodes;
}

void UndoProgress::finish(UndoEnd end) {
  ProgressHeader header;
  if (!file_ || !read_header(file_.get(), header)) return;
  header.end = end;
  write_header(file_.get(), header);  // what is lost of it is found out by looking at the disk
}

void UndoProgress::remove() {
  if (file_) ::unlink(path_.c_str());
}

BrokenOffUndo broken_off_undo(const std::string& log_path) {
  BrokenOffUndo undo{log_path};
  constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  const FileDescriptor log(::open(log_path.c_str(), flags));
  const FileDescriptor file(::open(undo_progress_path(log_path).c_str(), flags));
  ProgressHeader header;
  struct stat status {};
  const bool usable = log && file && ::flock(log.get(), LOCK_SH | LOCK_NB) == 0 && ::fstat(file.get(), &status) == 0 &&
                      S_ISREG(status.st_mode) && read_header(file.get(), header) &&
                      header.magic == ProgressHeader{}.magic &&
                      header.entries <= static_cast<std::uint64_t>(status.st_size);
  if (usable) {
    undo.entries = header.entries;
    undo.restored = count_restored(file.get(), header.entries);
    undo.end = header.end;
  }
  return undo;
}

std::vector<BrokenOffUndo> broken_off_undos(const std::string& log_folder) {
  constexpr std::string_view ending = ".undo";
  std::vector<BrokenOffUndo> undos;
  const FolderHandle folder = FolderHandle::open(log_folder);
  FolderReader reader;
  FolderEntry entry;
  if (folder) reader.start(folder);
  while (folder && reader.next(entry)) {
    if (!entry.name.ends_with(ending)) continue;
    const std::string log = std::string(entry.name.substr(0, entry.name.size() - ending.size()));
    if (!folder.exists(log.c_str())) continue;
    BrokenOffUndo undo = broken_off_undo(join_path(log_folder, log));
    if (undo.entries > 0 && undo.end == UndoEnd::open) undos.push_back(std::move(undo));
  }
  std::ranges::sort(undos, {}, &BrokenOffUndo::log_path);
  return undos;
}

}  // namespace brindle
