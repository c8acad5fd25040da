#pragma once

// One byte for each item of a long job, kept in a file through a mapping: a mark survives the process, whatever ends
// it, and costs one store.

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace brindle {

class MarkMap {
 public:
  MarkMap() = default;
  MarkMap(const MarkMap&) = delete;
  MarkMap& operator=(const MarkMap&) = delete;
  ~MarkMap() { release(); }

  /// To be called on the new and still empty file: on a copy-on-write disk, reserved space holds for a file exempt from
  /// it.
  static void exempt_from_copy(int descriptor);
  /// Reserves the disk space of `count` marks from `offset` (a multiple of the page size) on, zero where the file was
  /// shorter; from then on a mark cannot fail for want of space. Returns 0 or errno.
  static int reserve(int descriptor, std::uint64_t offset, std::size_t count);

  /// Begins to keep marks in the file, which stays the caller's and must stay open.
  void use(int descriptor, std::uint64_t offset, std::size_t count);
  void release();

  /// `index` is below the count. Different marks may be set by different threads at once.
  void set(std::size_t index, std::uint8_t mark) noexcept {
    if (marks_ != nullptr) {
      std::atomic_ref<std::uint8_t>(marks_[index]).store(mark, std::memory_order_relaxed);
    } else {
      set_by_call(index, mark);
    }
  }
  std::uint8_t get(std::size_t index) const noexcept;

 private:
  void set_by_call(std::size_t index, std::uint8_t mark) const noexcept;

  std::uint8_t* marks_ = nullptr;  // null on a disk that cannot map files
  std::size_t count_ = 0;
  int descriptor_ = -1;
  std::uint64_t offset_ = 0;
};

}  // namespace brindle
