#pragma once

// A file that somebody else made, opened for a look into it. Only regular files are ever opened: no pipe that waits for
// a writer, no device that does something when touched.

#include <cstddef>
#include <cstdint>
#include <string>

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

}  // namespace brindle
