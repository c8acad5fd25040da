#include "log/journal_format.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <utility>

namespace brindle {

void MarkMap::exempt_from_copy(int descriptor) {
  int flags = 0;
  if (::ioctl(descriptor, FS_IOC_GETFLAGS, &flags) != 0) return;
  flags |= FS_NOCOW_FL;
  ::ioctl(descriptor, FS_IOC_SETFLAGS, &flags);  // only a disk of that kind knows it
}

int MarkMap::reserve(int descriptor, std::uint64_t offset, std::size_t count) {
  // An empty range is refused.
  return ::posix_fallocate(descriptor, static_cast<off_t>(offset), static_cast<off_t>(count == 0 ? 1 : count));
}

void MarkMap::use(int descriptor, std::uint64_t offset, std::size_t count) {
  release();
  descriptor_ = descriptor;
  offset_ = offset;
  count_ = count == 0 ? 1 : count;
  void* mapping = ::mmap(nullptr, count_, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, static_cast<off_t>(offset));
  if (mapping != MAP_FAILED) marks_ = static_cast<std::uint8_t*>(mapping);
}

void MarkMap::release() {
  if (marks_ != nullptr) ::munmap(std::exchange(marks_, nullptr), count_);
  descriptor_ = -1;
}

std::uint8_t MarkMap::get(std::size_t index) const noexcept {
  if (marks_ != nullptr) return std::atomic_ref<std::uint8_t>(marks_[index]).load(std::memory_order_relaxed);
  std::uint8_t mark = 0;
  return ::pread(descriptor_, &mark, 1, static_cast<off_t>(offset_ + index)) == 1 ? mark : 0;
}

void MarkMap::set_by_call(std::size_t index, std::uint8_t mark) const noexcept {
  // A mark that is lost makes the item's fate a question to the disk, no more.
  if (::pwrite(descriptor_, &mark, 1, static_cast<off_t>(offset_ + index)) != 1) return;
}

}  // namespace brindle
