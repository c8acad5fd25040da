#pragma once

// A stream of bytes to a descriptor, collected and written in large pieces.

#include <string>
#include <string_view>

namespace brindle {

/// One thread. A reader that went away (EPIPE) ends the output quietly; any other failure is kept in `error()`. In both
/// cases what follows is thrown away.
class Output {
 public:
  explicit Output(int descriptor) : descriptor_(descriptor) {}
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  ~Output() { flush(); }

  Output& operator<<(std::string_view text) {
    buffer_ += text;
    if (buffer_.size() >= piece) flush();
    return *this;
  }
  Output& operator<<(char c) { return *this << std::string_view(&c, 1); }

  /// The buffer itself, for who appends to it piece by piece; call `flush_if_full` now and then.
  std::string& buffer() { return buffer_; }
  void flush_if_full() {
    if (buffer_.size() >= piece) flush();
  }
  void flush();

  /// True when nobody reads any more: there is no point in making more output.
  bool closed() const { return closed_; }
  /// errno of the first failed write that was not the reader's doing; 0 for none.
  int error() const { return error_; }

 private:
  static constexpr std::size_t piece = 1U << 16U;

  int descriptor_;
  std::string buffer_;
  bool closed_ = false;
  int error_ = 0;
};

}  // namespace brindle
