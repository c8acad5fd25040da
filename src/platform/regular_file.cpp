#include "platform/regular_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace brindle {

RegularFile::RegularFile(RegularFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), size_(other.size_) {}

RegularFile& RegularFile::operator=(RegularFile&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(size_, other.size_);
  return *this;
}

RegularFile::~RegularFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

RegularFile RegularFile::open(const std::string& path) {
  RegularFile file;
  struct stat facts {};
  // Asked twice: opening a device may do something, and what the path leads to may change in between.
  if (::stat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return file;
  file.descriptor_ = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
  if (!file) return file;
  if (::fstat(file.descriptor_, &facts) != 0 || !S_ISREG(facts.st_mode)) return {};
  file.size_ = static_cast<std::uint64_t>(facts.st_size);
  return file;
}

void RegularFile::expect_small_reads() const {
  constexpr std::uint64_t usual_fetch = 64U << 10U;
  if (size_ <= usual_fetch) return;
  ::posix_fadvise(descriptor_, 0, 0, POSIX_FADV_RANDOM);  // mere advice: no matter whether it is taken
}

std::size_t RegularFile::read_at(std::uint64_t offset, void* buffer, std::size_t count) const {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got =
        ::pread(descriptor_, static_cast<char*>(buffer) + done, count - done, static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

}  // namespace brindle
