#pragma once

// What journals and progress files are made of: a checksum, the layout of a journal's bytes, and marks.
//
// A journal's bytes, in the byte order of the machine:
//
//   header    JournalHeader, zeros until the list is complete
//   body      records, each a JournalRecord followed by its texts:
//               a folder: folder = folder_definition, inode = its number, text = its path
//               an entry: folder = a number defined before, text = old name and new name
//               a cycle (version 2, which only a run that has one is written in): folder = cycle_definition, inode =
//                 how many of the entries that follow pass their names round, text = the reserved name
//   marks     one byte an entry, from the next multiple of the page size on
//
// A journal counts as sealed when its header is there and the checksums of header and body are right.

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace brindle {

/// The checksum that stands in journals and progress files: 64 bits, a few bytes a nanosecond, the same whichever way
/// the bytes are cut into pieces. Guards against torn writes and wrong files, not against people.
class Checksum {
 public:
  void add(std::string_view bytes) {
    size_ += bytes.size();
    if (pending_ != 0) fill_tail(bytes);
    for (; bytes.size() >= block_size; bytes.remove_prefix(block_size)) take(bytes.data());
    if (!bytes.empty()) fill_tail(bytes);
  }

  std::uint64_t value() const {
    Checksum rest = *this;
    if (pending_ != 0) {
      std::fill(rest.tail_.begin() + pending_, rest.tail_.end(), '\0');
      rest.take(rest.tail_.data());
    }
    std::uint64_t sum = size_;
    for (const std::uint64_t lane : rest.lanes_) sum = mixed(sum ^ lane) + increment;
    return sum;
  }

 private:
  static constexpr std::size_t lane_count = 4;  // multiplications that do not wait for one another
  static constexpr std::size_t word_size = 8;
  static constexpr std::size_t block_size = lane_count * word_size;
  static constexpr std::uint64_t increment = 0x9E3779B97F4A7C15U;

  static std::uint64_t mixed(std::uint64_t value) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(value) * 0x9FB21C651E98DF25U;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
  }
  void take(const char* block) {
    for (std::size_t lane = 0; lane < lane_count; ++lane) {
      std::uint64_t word = 0;
      std::memcpy(&word, block + lane * word_size, word_size);
      lanes_[lane] = mixed(lanes_[lane] ^ word) + increment;
    }
  }
  void fill_tail(std::string_view& bytes) {
    const std::size_t part = std::min(bytes.size(), block_size - static_cast<std::size_t>(pending_));
    std::copy_n(bytes.data(), part, tail_.begin() + pending_);
    bytes.remove_prefix(part);
    pending_ += static_cast<std::ptrdiff_t>(part);
    if (pending_ < static_cast<std::ptrdiff_t>(block_size)) return;
    take(tail_.data());
    pending_ = 0;
  }

  std::array<std::uint64_t, lane_count> lanes_ = {0x6A09E667F3BCC908U, 0xBB67AE8584CAA73BU, 0x3C6EF372FE94F82BU,
                                                  0xA54FF53A5F1D36F1U};
  std::uint64_t size_ = 0;
  std::array<char, block_size> tail_{};
  std::ptrdiff_t pending_ = 0;
};

inline std::uint64_t checksum_of(std::string_view bytes) {
  Checksum checksum;
  checksum.add(bytes);
  return checksum.value();
}

struct JournalHeader {
  std::array<char, 8> magic{};
  std::uint32_t version = 0;
  std::uint32_t flags = 0;
  std::uint64_t entries = 0;
  std::uint64_t body_size = 0;
  std::uint64_t body_checksum = 0;
  std::uint64_t marks_offset = 0;
  std::array<char, 40> unused{};
  std::array<char, 32> appversion{};  // NUL-terminated
  std::uint64_t header_checksum = 0;  // of all before
};
static_assert(sizeof(JournalHeader) == 128);

struct JournalRecord {
  std::uint32_t folder = 0;
  std::uint16_t old_size = 0;  // a folder's path may be longer: its upper half is in new_size
  std::uint16_t new_size = 0;
  std::uint64_t inode = 0;
};
static_assert(sizeof(JournalRecord) == 16);

inline constexpr std::array<char, 8> journal_magic = {'b', 'r', 'i', 'n', 'j', 'r', 'n', 'l'};
inline constexpr std::uint32_t journal_version = 1;
inline constexpr std::uint32_t journal_version_with_cycles = 2;
inline constexpr std::uint32_t folder_definition = UINT32_MAX;
inline constexpr std::uint32_t cycle_definition = UINT32_MAX - 1;

inline constexpr std::uint32_t flag_folders = 1;
inline constexpr std::uint32_t flag_paths_follow = 2;

/// One byte for each item of a long job, kept in a file through a mapping: a mark survives the process, whatever ends
/// it, and costs one store.
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
