#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace brindle {

/// Owns a descriptor of the system's, or none (-1, as calls that failed return it), and closes it without touching
/// errno. Movable; one thread.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() { close(); }

  explicit operator bool() const { return number_ >= 0; }
  int get() const { return number_; }
  /// Returns 0 or errno: on some disks a failed write shows only here.
  int close() {
    if (number_ < 0) return 0;
    const int before = errno;
    const int error = ::close(std::exchange(number_, -1)) == 0 ? 0 : errno;
    errno = before;
    return error;
  }

 private:
  int number_ = -1;
};

}  // namespace brindle
