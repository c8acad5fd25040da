#include "metadata/audio_module/bounded_stream.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <stdexcept>
#include <string_view>

#include "metadata/audio_module/id3_frames.h"

namespace brindle::audio_module {
namespace {

// The library looks for tags in steps of a kilobyte, through the whole file where there are none; tags themselves it
// reads in one go each. Songs with large pictures need a few megabytes of the latter, junk all it can get of the
// former.
constexpr std::size_t step = 1024;
constexpr std::size_t scan_budget = std::size_t{1} << 20U;
constexpr std::size_t tag_budget = std::size_t{32} << 20U;
// The largest single read: a tag made of nothing but tiny values takes hundreds of times its memory.
constexpr std::size_t block_limit = std::size_t{16} << 20U;
constexpr std::size_t call_budget = 1'000'000;
// Tags at the end of a file are found however long the search before them was.
constexpr Offset tail_size = 4096;
// Most tags without pictures fit.
constexpr std::size_t window_capacity = 8192;
// Boxes in boxes are read by recursion. Songs need some ten levels.
constexpr std::ptrdiff_t stack_budget = std::ptrdiff_t{128} * 1024;

// Of APE tags and WMA's tables, which say beforehand how many values they hold.
constexpr unsigned int value_count_limit = 4096;

bool is_swamped(const TagLib::ByteVector& block) {
  constexpr unsigned int count_at = 16;
  return block.size() >= 32 && block.startsWith("APETAGEX") && block.toUInt(count_at, false) > value_count_limit;
}

}  // namespace

BoundedStream::BoundedStream(int descriptor, std::uint64_t size)
    : descriptor_(descriptor),
      size_(static_cast<Offset>(std::min<std::uint64_t>(size, std::numeric_limits<Offset>::max()))),
      bottom_(static_cast<const char*>(__builtin_frame_address(0))),
      calls_left_(call_budget),
      scan_left_(scan_budget),
      tag_left_(tag_budget) {}

bool BoundedStream::spend(std::size_t bytes) {
  if (calls_left_ == 0) throw std::runtime_error("the file asks for too much");
  --calls_left_;
  if (bytes <= step && position_ >= size_ - tail_size) return true;
  std::size_t& left = bytes <= step ? scan_left_ : tag_left_;
  if (bytes > left || bytes > block_limit) return false;
  left -= bytes;
  return true;
}

bool BoundedStream::too_deep() const {
  return bottom_ - static_cast<const char*>(__builtin_frame_address(0)) > stack_budget;
}

std::size_t BoundedStream::read_at(Offset offset, char* buffer, std::size_t count) const {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = ::pread(descriptor_, buffer + done, count - done, offset + static_cast<off_t>(done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

// Near the end the window takes in all of it: three kinds of tags are looked for there.
TagLib::ByteVector BoundedStream::read_window(std::size_t count) {
  const bool inside = position_ >= window_start_ &&
                      position_ + static_cast<Offset>(count) <= window_start_ + static_cast<Offset>(window_size_);
  if (!inside) {
    window_.resize(window_capacity);
    const Offset tail = std::max<Offset>(0, size_ - tail_size);
    window_start_ = position_ >= tail ? tail : position_;
    window_size_ = read_at(window_start_, window_.data(), window_.size());
  }
  const std::size_t start = std::min(static_cast<std::size_t>(position_ - window_start_), window_size_);
  const std::size_t available = std::min(count, window_size_ - start);
  return {window_.data() + start, static_cast<unsigned int>(available)};
}

TagLib::ByteVector BoundedStream::read_whole(std::size_t count) const {
  TagLib::ByteVector block(static_cast<unsigned int>(count));
  const std::size_t got = read_at(position_, block.data(), count);
  if (got < count) block.resize(static_cast<unsigned int>(got));
  return block;
}

TagLib::ByteVector BoundedStream::readBlock(BlockSize length) {
  const auto rest = static_cast<BlockSize>(std::max<Offset>(0, size_ - position_));
  const std::size_t count = std::min(length, rest);
  if (!spend(count) || count == 0 || too_deep()) return {};
  const TagLib::ByteVector block = count <= window_capacity / 2 ? read_window(count) : read_whole(count);
  if (is_swamped(block) || is_swamped_table(block)) return {};
  const TagLib::ByteVector clean = cleaned(block);
  position_ += static_cast<Offset>(block.size());
  return clean;
}

// An ID3 tag: a head of ten bytes, and then all frames in one go. Tags in which bytes were put between others are left
// alone, and so are those with a second head.
TagLib::ByteVector BoundedStream::cleaned(const TagLib::ByteVector& block) {
  constexpr unsigned int id3_head = 10;
  if (block.size() == id3_head && block.startsWith("ID3")) {
    id3_version_ = static_cast<unsigned char>(block.data()[3]);
    const unsigned int flags_of_form = id3_version_ == 4 ? 0x40 : 0xC0;
    const bool is_plain = (static_cast<unsigned char>(block.data()[5]) & flags_of_form) == 0;
    frames_position_ = is_plain ? position_ + static_cast<Offset>(id3_head) : -1;
    return block;
  }
  return position_ == frames_position_ ? without_empty_frames(block, id3_version_) : block;
}

// WMA's tables of attributes: what they are, their size in eight bytes, and the count in two.
bool BoundedStream::is_swamped_table(const TagLib::ByteVector& block) {
  constexpr std::array<std::string_view, 3> tables = {"\x40\xA4\xD0\xD2", "\xEA\xCB\xF8\xC5", "\x94\x1C\x23\x44"};
  const std::string_view bytes(block.data(), block.size());
  const bool is_table =
      bytes.size() == 16 && std::find(tables.begin(), tables.end(), bytes.substr(0, 4)) != tables.end();
  if (is_table) count_position_ = position_ + 16 + 8;
  return bytes.size() == 2 && position_ == count_position_ && block.toUShort(false) > value_count_limit;
}

void BoundedStream::seek(Offset offset, Position position) {
  const Offset from = position == Beginning ? 0 : position == Current ? position_ : size_;
  Offset target = 0;
  if (!__builtin_add_overflow(from, offset, &target) && target >= 0) position_ = target;
}

}  // namespace brindle::audio_module
