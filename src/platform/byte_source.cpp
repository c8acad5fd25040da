#include "platform/byte_source.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/folder_handle.h"

namespace brindle {
namespace {

constexpr int file_flags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;

int open_real_path(const std::string& path) {
  open_how how{};
  how.flags = file_flags;
  how.resolve = RESOLVE_NO_SYMLINKS;
  return static_cast<int>(::syscall(SYS_openat2, AT_FDCWD, path.c_str(), &how, sizeof how));
}

// For a file that is itself a link, for long paths, and where the system does not know the call above.
int open_in_real_folder(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ::open(path.c_str(), file_flags);
  const FolderHandle folder = FolderHandle::open_real(slash == 0 ? "/" : path.substr(0, slash));
  struct stat facts {};
  const char* name = path.c_str() + slash + 1;
  if (!folder || ::fstatat(folder.descriptor(), name, &facts, 0) != 0 || !S_ISREG(facts.st_mode)) return -1;
  return ::openat(folder.descriptor(), name, file_flags);
}

}  // namespace

RegularFile RegularFile::open(const std::string& path) {
  RegularFile file;
  struct stat facts {};
  // Asked twice: opening a device may do something, and what the path leads to may change in between.
  if (::stat(path.c_str(), &facts) == 0 ? !S_ISREG(facts.st_mode) : errno != ENAMETOOLONG) return file;
  file.file_ = FileDescriptor(open_real_path(path));
  if (!file) file.file_ = FileDescriptor(open_in_real_folder(path));
  if (!file) return file;
  if (::fstat(file.descriptor(), &facts) != 0 || !S_ISREG(facts.st_mode)) return {};
  file.size_ = static_cast<std::uint64_t>(facts.st_size);
  return file;
}

void RegularFile::expect_small_reads() const {
  constexpr std::uint64_t usual_fetch = 64U << 10U;
  if (size_ <= usual_fetch) return;
  ::posix_fadvise(file_.get(), 0, 0, POSIX_FADV_RANDOM);  // mere advice: no matter whether it is taken
}

std::size_t RegularFile::read_at(std::uint64_t offset, void* buffer, std::size_t count) const {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got =
        ::pread(file_.get(), static_cast<char*>(buffer) + done, count - done, static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

std::uint64_t number_of_bytes(std::string_view bytes, bool big_endian) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    number = number << 8U | static_cast<unsigned char>(bytes[big_endian ? i : bytes.size() - 1 - i]);
  }
  return number;
}

bool ByteSource::spend(std::size_t bytes) {
  if (reads_left_ == 0 || bytes > bytes_left_) return false;
  --reads_left_;
  bytes_left_ -= bytes;
  return true;
}

// Who reads on gets a whole window, who jumps about a page.
void ByteSource::move_window(std::uint64_t offset, std::size_t count) {
  constexpr std::size_t page = 4096;
  const bool reads_on = offset >= start_ && offset - start_ <= held_ + window_size;
  const std::size_t wanted = reads_on ? window_size : std::max(page, count);
  start_ = offset;
  held_ = spend(wanted) ? file_->read_at(offset, window_.data(), wanted) : 0;
}

std::string_view ByteSource::at(std::uint64_t offset, std::size_t count) {
  if (offset >= end_) return {};
  count = static_cast<std::size_t>(std::min<std::uint64_t>({count, end_ - offset, window_size}));
  if (file_ == nullptr) return block_.substr(static_cast<std::size_t>(offset), count);
  if (offset < start_ || offset + count > start_ + held_) move_window(offset, count);
  const auto from = static_cast<std::size_t>(offset - start_);
  return {window_.data() + from, std::min(count, held_ - from)};
}

std::uint64_t ByteSource::number(std::uint64_t offset, std::size_t count, bool big_endian) {
  const std::string_view bytes = at(offset, count);
  return bytes.size() < count ? 0 : number_of_bytes(bytes, big_endian);
}

std::string ByteSource::copy(std::uint64_t offset, std::uint64_t count) {
  if (count > piece_limit || offset >= end_) return {};
  const auto wanted = static_cast<std::size_t>(std::min(count, end_ - offset));
  const bool is_held = offset >= start_ && offset + wanted <= start_ + held_;
  if (file_ == nullptr) return std::string(block_.substr(static_cast<std::size_t>(offset), wanted));
  if (is_held) return std::string(at(offset, wanted));
  std::string bytes;
  if (!spend(wanted)) return bytes;
  bytes.resize(wanted);
  bytes.resize(file_->read_at(offset, bytes.data(), wanted));
  return bytes;
}

}  // namespace brindle
