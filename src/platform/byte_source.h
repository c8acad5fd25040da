#pragma once

// Bytes that somebody else made, looked at here and there: of a file or of a block in memory. A file that makes its
// reader ask too often seems to end there.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/regular_file.h"

namespace brindle {

/// The number that bytes stand for; no more than eight of them.
std::uint64_t number_of_bytes(std::string_view bytes, bool big_endian);

/// Refers to what it reads. An object belongs to one thread.
class ByteSource {
 public:
  static constexpr std::size_t window_size = 16384;
  static constexpr std::size_t piece_limit = std::size_t{4} << 20U;

  explicit ByteSource(const RegularFile& file) : file_(&file), end_(file.size()) {}
  explicit ByteSource(std::string_view block) : block_(block), end_(block.size()) {}
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;

  std::uint64_t size() const { return end_; }

  /// `count` bytes (at most window_size) at `offset`; fewer at the end. Valid until the next call of any function.
  std::string_view at(std::uint64_t offset, std::size_t count);

  /// The number in the `count` (at most eight) bytes at `offset`; what lies behind the end counts as 0.
  std::uint64_t number(std::uint64_t offset, std::size_t count, bool big_endian = true);

  /// A copy of `count` bytes at `offset`; fewer at the end, and none when that is more than piece_limit.
  std::string copy(std::uint64_t offset, std::uint64_t count);

 private:
  void move_window(std::uint64_t offset, std::size_t count);
  bool spend(std::size_t bytes);

  const RegularFile* file_ = nullptr;
  std::string_view block_;
  std::uint64_t end_;
  std::uint64_t start_ = 0;  // of the window
  std::size_t held_ = 0;
  std::size_t reads_left_ = 20'000;
  std::size_t bytes_left_ = std::size_t{256} << 20U;
  std::array<char, window_size> window_;
};

}  // namespace brindle
