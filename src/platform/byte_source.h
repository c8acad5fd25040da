#pragma once

// Bytes that somebody else made, looked at here and there: of a file or of a block in memory. Only regular files are
// ever opened: no pipe that waits for a writer, no device that does something when touched.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/file_descriptor.h"

namespace brindle {

/// Owns one descriptor. Movable. Reading moves nothing, so several threads may read at once.
class RegularFile {
 public:
  /// Opens for reading: the file, or what it leads to when it is itself a symbolic link; never through a link on the
  /// way. An empty object when that fails or the path leads to anything but a regular file; never waits for another
  /// process.
  static RegularFile open(const std::string& path);

  /// Says that little will be read: the system then fetches from the disk what is asked for and not eight times as
  /// much.
  void expect_small_reads() const;

  explicit operator bool() const { return static_cast<bool>(file_); }
  int descriptor() const { return file_.get(); }
  std::uint64_t size() const { return size_; }  ///< bytes, when it was opened

  /// Reads up to `count` bytes from `offset`; fewer at the end of the file, or where the disk fails.
  std::size_t read_at(std::uint64_t offset, void* buffer, std::size_t count) const;

 private:
  FileDescriptor file_;
  std::uint64_t size_ = 0;
};

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
