#pragma once

// A file as the tag library wants to see it, with an end to its patience: a file that makes it read too much, too often
// or too deep seems to end there. One thread at a time.

#include <taglib/tiostream.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "metadata/audio_module/tag_library.h"

namespace brindle::audio_module {

class BoundedStream final : public TagLib::IOStream {
 public:
  /// Reads through `descriptor`, which stays the caller's. Made by the thread that reads, no deeper in its stack than
  /// the reading.
  BoundedStream(int descriptor, std::uint64_t size);

  /// What the library is to take for the file's name.
  void set_name(std::string name) { name_ = std::move(name); }

  TagLib::FileName name() const override { return name_.c_str(); }
  /// Throws std::runtime_error when called too often.
  TagLib::ByteVector readBlock(BlockSize length) override;
  void seek(Offset offset, Position position = Beginning) override;
  Offset tell() const override { return position_; }
  Offset length() override { return size_; }
  bool readOnly() const override { return true; }
  bool isOpen() const override { return true; }

  // Nothing is ever written.
  void writeBlock(const TagLib::ByteVector&) override {}
  void insert(const TagLib::ByteVector&, Start, BlockSize) override {}
  void removeBlock(Start, BlockSize) override {}
  void truncate(Offset) override {}

 private:
  bool spend(std::size_t bytes);
  bool too_deep() const;
  bool is_swamped_table(const TagLib::ByteVector& block);
  TagLib::ByteVector cleaned(const TagLib::ByteVector& block);
  TagLib::ByteVector read_window(std::size_t count);
  TagLib::ByteVector read_whole(std::size_t count) const;
  std::size_t read_at(Offset offset, char* buffer, std::size_t count) const;

  int descriptor_;
  Offset size_;
  std::string name_;
  const char* bottom_;  // of the stack, as far as the reading goes
  Offset position_ = 0;
  Offset count_position_ = -1;   // where a table says how many values it holds
  Offset frames_position_ = -1;  // where the frames of an ID3 tag begin
  unsigned int id3_version_ = 0;
  Offset window_start_ = 0;
  std::size_t window_size_ = 0;
  std::vector<char> window_;
  std::size_t calls_left_;
  std::size_t scan_left_;
  std::size_t tag_left_;
};

}  // namespace brindle::audio_module
