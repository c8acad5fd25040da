#pragma once

// The checksum that stands in journals and progress files: 64 bits, a few bytes a nanosecond, the same whichever way
// the bytes are cut into pieces. Guards against torn writes and wrong files, not against people.

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
    while (!bytes.empty()) {
      if (pending_ == 0 && bytes.size() >= word_size) {
        take(bytes.data());
        bytes.remove_prefix(word_size);
      } else {
        tail_[pending_++] = bytes.front();
        bytes.remove_prefix(1);
        if (pending_ == word_size) take_tail();
      }
    }
  }

  std::uint64_t value() const {
    Checksum rest = *this;
    while (rest.pending_ != 0) {
      rest.tail_[rest.pending_++] = 0;
      if (rest.pending_ == word_size) rest.take_tail();
    }
    return mixed(rest.state_ ^ size_);
  }

 private:
  static constexpr std::size_t word_size = 8;

  static std::uint64_t mixed(std::uint64_t value) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(value) * 0x9FB21C651E98DF25U;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
  }
  void take(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, word_size);
    state_ = mixed(state_ ^ word) + 0x9E3779B97F4A7C15U;
  }
  void take_tail() {
    take(tail_.data());
    pending_ = 0;
  }

  std::uint64_t state_ = 0x6A09E667F3BCC908U;
  std::uint64_t size_ = 0;
  std::array<char, word_size> tail_{};
  std::size_t pending_ = 0;
};

inline std::uint64_t checksum_of(std::string_view bytes) {
  Checksum checksum;
  checksum.add(bytes);
  return checksum.value();
}

}  // namespace brindle
