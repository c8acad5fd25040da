#include "platform/image_module/tiff_guard.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <vector>

namespace brindle::image_module {
namespace {

enum Tag : unsigned {
  sub_directories = 0x014A,
  xmp = 0x02BC,
  iptc = 0x83BB,
  photoshop = 0x8649,
  exif_directory = 0x8769,
  gps_directory = 0x8825,
  maker_note = 0x927C,
  interoperability_directory = 0xA005,
  private_data = 0xC634,
  padding = 0xEA1C,
};

constexpr std::uint64_t tag_size_limit = 64U << 10U;
constexpr std::uint64_t packet_size_limit = 4U << 20U;
constexpr std::uint64_t total_limit = 16U << 20U;
constexpr std::size_t directory_limit = 64;
constexpr std::size_t entry_size = 12;
// What stands behind the byte order: TIFF, and the makers' own numbers for the same structure.
constexpr unsigned kinds[] = {0x002A, 0x0055, 0x4F52, 0x5352};
// The library refuses larger directories.
constexpr unsigned entry_count_limit = 256;

bool is_directory(unsigned tag) {
  return tag == sub_directories || tag == exif_directory || tag == gps_directory || tag == interoperability_directory;
}

std::uint64_t limit_of(unsigned tag) {
  if (tag == maker_note || tag == private_data) return 0;
  return tag == xmp || tag == iptc || tag == photoshop ? packet_size_limit : tag_size_limit;
}

class Guard {
 public:
  /// Without `kept` tags all entries stay.
  Guard(unsigned char* data, std::size_t size, std::span<const std::uint16_t> kept)
      : data_(data), size_(size), kept_(kept) {}

  void run() {
    if (size_ < 8 || data_[0] != data_[1] || (data_[0] != 'I' && data_[0] != 'M')) return;
    big_endian_ = data_[0] == 'M';
    const auto kind = static_cast<unsigned>(number(2, 2));
    if (std::find(std::begin(kinds), std::end(kinds), kind) == std::end(kinds)) return;
    visit(number(4, 4));
    // More are added on the way.
    for (std::size_t i = 0; i < directories_.size(); ++i) trim_directory(directories_[i]);
  }

 private:
  std::uint64_t number(std::size_t offset, std::size_t count) const {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
      value = value << 8U | data_[offset + (big_endian_ ? i : count - 1 - i)];
    }
    return value;
  }

  void visit(std::uint64_t offset) {
    const bool known = std::find(directories_.begin(), directories_.end(), offset) != directories_.end();
    if (offset != 0 && offset + 2 <= size_ && !known && directories_.size() < directory_limit) {
      directories_.push_back(static_cast<std::size_t>(offset));
    }
  }

  void trim_directory(std::size_t start) {
    const auto count = static_cast<unsigned>(number(start, 2));
    const std::size_t end = start + 2 + std::size_t{count} * entry_size;
    if (count > entry_count_limit) return;
    if (!kept_.empty()) return keep_entries(start, end);
    for (std::size_t at = start + 2; at < end && at + entry_size <= size_; at += entry_size) trim_entry(at);
    if (end + 4 <= size_) visit(number(end, 4));
  }

  // Moves the entries that stay together; no directory follows.
  void keep_entries(std::size_t start, std::size_t end) {
    std::size_t to = start + 2;
    for (std::size_t at = to; at < end && at + entry_size <= size_; at += entry_size) {
      const auto tag = static_cast<std::uint16_t>(number(at, 2));
      if (std::find(kept_.begin(), kept_.end(), tag) == kept_.end()) continue;
      std::memmove(data_ + to, data_ + at, entry_size);
      trim_entry(to);
      to += entry_size;
    }
    write_short(start, static_cast<unsigned>((to - start - 2) / entry_size));
    if (to + 4 <= size_) std::fill_n(data_ + to, 4, static_cast<unsigned char>(0));
  }

  void write_short(std::size_t at, unsigned value) {
    data_[at + (big_endian_ ? 0 : 1)] = static_cast<unsigned char>(value >> 8U);
    data_[at + (big_endian_ ? 1 : 0)] = static_cast<unsigned char>(value & 0xFFU);
  }

  std::uint64_t size_of_entry(std::size_t at) const {
    static constexpr unsigned sizes[] = {1, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    const std::uint64_t type = number(at + 2, 2);
    return number(at + 4, 4) * (type < std::size(sizes) ? sizes[type] : 8U);
  }

  void trim_entry(std::size_t at) {
    const auto tag = static_cast<unsigned>(number(at, 2));
    const std::uint64_t size = size_of_entry(at);
    if (is_directory(tag) && size <= tag_size_limit) visit_directories(at);
    total_ += size;
    if (size <= limit_of(tag) && total_ <= total_limit) return;
    total_ -= size;
    // A value of no bytes, under a number that stands for nothing.
    write_short(at, padding);
    std::fill_n(data_ + at + 4, 4, static_cast<unsigned char>(0));
  }

  void visit_directories(std::size_t at) {
    const std::uint64_t count = std::min<std::uint64_t>(number(at + 4, 4), directory_limit);
    const std::uint64_t list = count <= 1 ? at + 8 : number(at + 8, 4);
    for (std::uint64_t i = 0; i < count && list + 4 * i + 4 <= size_; ++i) {
      visit(number(static_cast<std::size_t>(list + 4 * i), 4));
    }
  }

  unsigned char* data_;
  std::size_t size_;
  std::span<const std::uint16_t> kept_;
  bool big_endian_ = false;
  std::uint64_t total_ = 0;
  std::vector<std::size_t> directories_;
};

}  // namespace

void trim_tiff(unsigned char* data, std::size_t size) {
  Guard(data, size, {}).run();
}

void keep_in_tiff(unsigned char* data, std::size_t size, std::span<const std::uint16_t> tags) {
  Guard(data, size, tags).run();
}

}  // namespace brindle::image_module
