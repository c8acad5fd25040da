#pragma once

// A file as the metadata library wants to see it, with an end to its patience: a file that makes it read too much or
// too often throws. One thread at a time.

#include <cstddef>
#include <cstdint>
#include <exiv2/basicio.hpp>
#include <string>
#include <vector>

namespace brindle::image_module {

class BoundedIo final : public Exiv2::BasicIo {
 public:
  /// Reads through `descriptor`, which stays the caller's. Files above 4 GiB are to be refused before.
  BoundedIo(int descriptor, std::uint64_t size);
  ~BoundedIo() override;
  BoundedIo(const BoundedIo&) = delete;
  BoundedIo& operator=(const BoundedIo&) = delete;

  int open() override;
  int close() override { return 0; }
  Exiv2::DataBuf read(long count) override;
  long read(Exiv2::byte* buffer, long count) override;
  int getb() override;
  int seek(long offset, Position position) override;
  Exiv2::byte* mmap(bool writeable) override;
  int munmap() override;
  long tell() const override { return static_cast<long>(position_); }
  std::size_t size() const override { return size_; }
  bool isopen() const override { return true; }
  int error() const override { return 0; }
  bool eof() const override { return eof_; }
  std::string path() const override { return {}; }

  // Nothing is ever written.
  long write(const Exiv2::byte*, long) override { return 0; }
  long write(Exiv2::BasicIo&) override { return 0; }
  int putb(Exiv2::byte) override { return EOF; }
  void transfer(Exiv2::BasicIo&) override;

 private:
  void spend(std::size_t bytes);
  std::size_t copy_from_window(Exiv2::byte* buffer, std::size_t count);
  std::size_t read_at(std::uint64_t offset, Exiv2::byte* buffer, std::size_t count) const;

  int descriptor_;
  std::size_t size_;
  std::uint64_t position_ = 0;
  bool eof_ = false;
  std::uint64_t window_start_ = 0;
  std::size_t window_size_ = 0;
  std::vector<Exiv2::byte> window_;
  void* mapping_ = nullptr;
  std::uint64_t bytes_left_;
  std::uint64_t calls_left_;
};

}  // namespace brindle::image_module
