#pragma once

// The checksum that stands in journals and progress files: 64 bits, a few bytes a nanosecond, the same whichever way
// the bytes are cut into pieces. Guards against torn writes and wrong files, not against people.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace brindle {

class Checksum {
 public:
  void add(std::string_view bytes) {
    size_ += bytes.size();
    if (pending_ != 0) fill_tail(bytes);
    for (; bytes.size() >= block_size; bytes.remove_prefix(block_size)) take(bytes.data());
    if (!bytes.empty()) fill_tail(bytes);
  }

  std::uint64_t value() const {
    Checksum rest = *this;
    if (pending_ != 0) {
      std::fill(rest.tail_.begin() + pending_, rest.tail_.end(), '\0');
      rest.take(rest.tail_.data());
    }
    std::uint64_t sum = size_;
    for (const std::uint64_t lane : rest.lanes_) sum = mixed(sum ^ lane) + increment;
    return sum;
  }

 private:
  static constexpr std::size_t lane_count = 4;  // multiplications that do not wait for one another
  static constexpr std::size_t word_size = 8;
  static constexpr std::size_t block_size = lane_count * word_size;
  static constexpr std::uint64_t increment = 0x9E3779B97F4A7C15U;

  static std::uint64_t mixed(std::uint64_t value) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(value) * 0x9FB21C651E98DF25U;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
  }
  void take(const char* block) {
    for (std::size_t lane = 0; lane < lane_count; ++lane) {
      std::uint64_t word = 0;
      std::memcpy(&word, block + lane * word_size, word_size);
      lanes_[lane] = mixed(lanes_[lane] ^ word) + increment;
    }
  }
  void fill_tail(std::string_view& bytes) {
    const std::size_t part = std::min(bytes.size(), block_size - static_cast<std::size_t>(pending_));
    std::copy_n(bytes.data(), part, tail_.begin() + pending_);
    bytes.remove_prefix(part);
    pending_ += static_cast<std::ptrdiff_t>(part);
    if (pending_ < static_cast<std::ptrdiff_t>(block_size)) return;
    take(tail_.data());
    pending_ = 0;
  }

  std::array<std::uint64_t, lane_count> lanes_ = {0x6A09E667F3BCC908U, 0xBB67AE8584CAA73BU, 0x3C6EF372FE94F82BU,
                                                  0xA54FF53A5F1D36F1U};
  std::uint64_t size_ = 0;
  std::array<char, block_size> tail_{};
  std::ptrdiff_t pending_ = 0;
};

inline std::uint64_t checksum_of(std::string_view bytes) {
  Checksum checksum;
  checksum.add(bytes);
  return checksum.value();
}

}  // namespace brindle
