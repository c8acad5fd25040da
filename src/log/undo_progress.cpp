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

#include "log/journal.h"
#include "platform/atomic_file.h"
#include "platform/data_folders.h"
#include "platform/folder_handle.h"

namespace brindle {
namespace {

struct ProgressHeader {
  std::array<char, 8> magic = {'b', 'r', 'i', 'n', 'u', 'n', 'd', '1'};
  std::uint64_t log_checksum = 0;
  std::uint64_t entries = 0;
  std::array<char, 40> boot_id{};

  bool is_of_same_log(const ProgressHeader& other) const {
    return magic == other.magic && log_checksum == other.log_checksum && entries == other.entries;
  }
};
static_assert(sizeof(ProgressHeader) == 64);

std::uint64_t marks_offset() {
  return static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

ProgressHeader header_for(std::uint64_t log_checksum, std::size_t entries) {
  ProgressHeader header;
  header.log_checksum = log_checksum;
  header.entries = entries;
  const std::string boot = boot_id();
  std::memcpy(header.boot_id.data(), boot.data(), boot.size());
  return header;
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

// What was only made to find out that it cannot be locked.
void remove_if_empty(int descriptor, const std::string& path) {
  struct stat status {};
  if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0) ::unlink(path.c_str());
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
  std::string ignored;
  if (!createApplicationUsersFolder("", ignored)) return {};
  return fmt::format("{}/{:016x}.undo", getAppPath(), log_checksum);
}

}  // namespace

std::string undo_progress_path(const std::string& log_path) {
  return log_path + ".undo";
}

UndoProgress::~UndoProgress() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

std::string UndoProgress::open(const std::string& log_path, std::uint64_t log_checksum, std::size_t entries) {
  int error = open_file(undo_progress_path(log_path));
  if (error != 0 && error != EWOULDBLOCK) {
    const std::string elsewhere = path_in_data_folder(log_checksum);
    if (!elsewhere.empty()) error = open_file(elsewhere);
  }
  if (error == EWOULDBLOCK) return fmt::format("“{}” is just being undone by another process", log_path);
  if (error == 0) error = adopt_or_begin(log_checksum, entries);
  if (error == 0) return {};
  return fmt::format("the undoing of “{}” cannot be kept track of: {}", log_path, system_error_text(error));
}

int UndoProgress::open_file(const std::string& path) {
  path_ = path;
  descriptor_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, private_file_mode);
  if (descriptor_ < 0) return errno;
  struct stat status {};
  const bool locked = ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0;
  int error = locked ? 0 : errno;
  if (error == 0 && ::fstat(descriptor_, &status) != 0) error = errno;
  // Without a name any more: the undo that held it has just come to its end.
  if (error == 0 && status.st_nlink == 0) error = EWOULDBLOCK;
  // With a second name it may be any file, linked to here by another user.
  if (error == 0 && (!S_ISREG(status.st_mode) || status.st_nlink != 1)) error = EINVAL;
  if (error == 0) return 0;
  if (error == ENOLCK) remove_if_empty(descriptor_, path);
  ::close(descriptor_);
  descriptor_ = -1;
  return error;
}

int UndoProgress::adopt_or_begin(std::uint64_t log_checksum, std::size_t entries) {
  const ProgressHeader wanted = header_for(log_checksum, entries);
  ProgressHeader found;
  const bool adopts = read_header(descriptor_, found) && found.is_of_same_log(wanted);
  certain_ = !adopts || (found.boot_id == wanted.boot_id && wanted.boot_id.front() != '\0');
  if (!adopts && ::ftruncate(descriptor_, 0) != 0) return errno;
  if (!adopts) MarkMap::exempt_from_copy(descriptor_);
  int error = MarkMap::reserve(descriptor_, marks_offset(), entries);
  // The header comes last: without it, whatever else is there counts for nothing.
  if (error == 0 && !adopts && !write_header(descriptor_, wanted)) error = errno;
  if (error != 0 && !adopts) remove();
  if (error != 0) return error;
  marks_.use(descriptor_, marks_offset(), entries);
  return 0;
}

void UndoProgress::remove() {
  if (descriptor_ >= 0) ::unlink(path_.c_str());
}

BrokenOffUndo broken_off_undo(const std::string& log_path) {
  BrokenOffUndo undo{log_path};
  const int descriptor =
      ::open(undo_progress_path(log_path).c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0) return undo;
  ProgressHeader header;
  struct stat status {};
  const bool usable = ::flock(descriptor, LOCK_SH | LOCK_NB) == 0 && ::fstat(descriptor, &status) == 0 &&
                      S_ISREG(status.st_mode) && read_header(descriptor, header) &&
                      header.magic == ProgressHeader{}.magic &&
                      header.entries <= static_cast<std::uint64_t>(status.st_size);
  if (usable) {
    undo.entries = header.entries;
    undo.restored = count_restored(descriptor, header.entries);
  }
  ::close(descriptor);
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
    BrokenOffUndo undo = broken_off_undo(fmt::format("{}/{}", log_folder, log));
    if (undo.entries > 0) undos.push_back(std::move(undo));
  }
  std::ranges::sort(undos, {}, &BrokenOffUndo::log_path);
  return undos;
}

}  // namespace brindle
