#pragma once

// Where text of any length goes: a file that is replaced once the text is whole, or a pipe. One thread.

#include <string>
#include <string_view>

#include "platform/atomic_file.h"

namespace brindle {

/// Destroying it before finish() leaves the old file as it was.
class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  /// Turns to a path. A regular file there is replaced by finish(), and keeps its permission bits; a symbolic link is
  /// followed and stays a link. What is no regular file, and what lies in /dev or /proc (such as /dev/stdout, wherever
  /// that leads), is appended to as the text comes. A pipe that nobody reads is refused (ENXIO). Returns 0 or errno.
  [[nodiscard]] int open(const std::string& path);
  /// Buffered. After an error further writes do nothing; finish() reports it.
  void write(std::string_view bytes);
  /// Writes the rest, and gives a replaced file its name. Returns 0 or errno.
  [[nodiscard]] int finish();

 private:
  void flush();

  AtomicFile file_;
  int descriptor_ = -1;  // written to directly
  int error_ = 0;
  std::string buffer_;
};

}  // namespace brindle
