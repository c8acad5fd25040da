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

  /// Turns to a path. A regular file there is replaced by finish() as AtomicFile does it, through links too. What is no
  /// regular file, and what the program has open already (such as /dev/stdout, wherever that leads), is appended to as
  /// the text comes. A pipe that nobody reads is refused. The sentence, here and below, names the file.
  Status open(const std::string& path);
  /// Buffered. After an error further writes do nothing; finish() reports it.
  void write(std::string_view bytes);
  /// Writes the rest, and gives a replaced file its name.
  Status finish();

 private:
  int open_stream(const std::string& path);
  void flush();
  Status status() const;

  std::string path_;
  AtomicFile file_;
  FileDescriptor stream_;  // written to directly
  int error_ = 0;
  std::string buffer_;
};

}  // namespace brindle
