#include "platform/image_module/bounded_io.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exiv2/error.hpp>

#include "platform/image_module/tiff_guard.h"

namespace brindle::image_module {
namespace {

constexpr std::size_t window_capacity = 16384;
// No picture needs a tenth of either: hostile files are full of tiny boxes, or of one that never ends.
constexpr std::uint64_t byte_budget = 256U << 20U;
constexpr std::uint64_t call_budget = 1'000'000;
// Nor does any kind of metadata come in larger pieces.
constexpr std::size_t piece_limit = 4U << 20U;

[[noreturn]] void give_up() {
  throw Exiv2::Error(Exiv2::kerInputDataReadFailed);
}

}  // namespace

BoundedIo::BoundedIo(int descriptor, std::uint64_t size)
    : descriptor_(descriptor), size_(size), bytes_left_(byte_budget), calls_left_(call_budget) {}

BoundedIo::~BoundedIo() {
  if (mapping_ != nullptr) ::munmap(mapping_, size_);
}

int BoundedIo::open() {
  position_ = 0;
  eof_ = false;
  return 0;
}

void BoundedIo::spend(std::size_t bytes) {
  if (calls_left_ == 0 || bytes > bytes_left_ || bytes > piece_limit) give_up();
  --calls_left_;
  bytes_left_ -= bytes;
}

std::size_t BoundedIo::read_at(std::uint64_t offset, Exiv2::byte* buffer, std::size_t count) const {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = ::pread(descriptor_, buffer + done, count - done, static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

std::size_t BoundedIo::copy_from_window(Exiv2::byte* buffer, std::size_t count) {
  const bool inside = position_ >= window_start_ && position_ + count <= window_start_ + window_size_;
  if (!inside) {
    window_.resize(window_capacity);
    window_start_ = position_;
    window_size_ = read_at(position_, window_.data(), window_.size());
  }
  const std::size_t start = static_cast<std::size_t>(position_ - window_start_);
  const std::size_t available = std::min(count, window_size_ - start);
  std::memcpy(buffer, window_.data() + start, available);
  return available;
}

long BoundedIo::read(Exiv2::byte* buffer, long count) {
  if (count <= 0) return 0;
  const auto wanted = static_cast<std::size_t>(count);
  const std::size_t possible = std::min(wanted, position_ < size_ ? size_ - static_cast<std::size_t>(position_) : 0);
  spend(possible);
  const std::size_t got = possible == 0                 ? 0
                          : possible <= window_capacity ? copy_from_window(buffer, possible)
                                                        : read_at(position_, buffer, possible);
  position_ += got;
  eof_ = got < wanted;
  return static_cast<long>(got);
}

Exiv2::DataBuf BoundedIo::read(long count) {
  if (count < 0 || static_cast<std::uint64_t>(count) > piece_limit) give_up();
  Exiv2::DataBuf buffer(count);
  buffer.size_ = read(buffer.pData_, count);
  return buffer;
}

int BoundedIo::getb() {
  Exiv2::byte byte = 0;
  return read(&byte, 1) == 1 ? byte : EOF;
}

int BoundedIo::seek(long offset, Position position) {
  const std::uint64_t from = position == beg ? 0 : position == cur ? position_ : size_;
  const auto target = static_cast<std::int64_t>(from) + offset;
  spend(0);
  if (target < 0 || static_cast<std::uint64_t>(target) > size_) return 1;
  position_ = static_cast<std::uint64_t>(target);
  eof_ = false;
  return 0;
}

Exiv2::byte* BoundedIo::mmap(bool writeable) {
  if (writeable || size_ == 0) give_up();
  if (mapping_ == nullptr) {
    void* const mapped = ::mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE, descriptor_, 0);
    if (mapped == MAP_FAILED) give_up();
    mapping_ = mapped;
    trim_tiff(static_cast<unsigned char*>(mapped), size_);  // in our copy: the mapping is private
  }
  return static_cast<Exiv2::byte*>(mapping_);
}

// The mapping lives as long as the object: values may still point into it.
int BoundedIo::munmap() {
  return 0;
}

void BoundedIo::transfer(Exiv2::BasicIo&) {
  give_up();
}

}  // namespace brindle::image_module
