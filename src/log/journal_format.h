#pragma once

// A journal's bytes, in the byte order of the machine:
//
//   header    JournalHeader, zeros until the list is complete
//   body      records, each a JournalRecord followed by its texts:
//               a folder: folder = folder_definition, inode = its number, text = its path
//               an entry: folder = a number defined before, text = old name and new name
//   marks     one byte an entry, from the next multiple of the page size on
//
// A journal counts as sealed when its header is there and the checksums of header and body are right.

#include <array>
#include <cstdint>

namespace brindle {

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
inline constexpr std::uint32_t folder_definition = UINT32_MAX;

inline constexpr std::uint32_t flag_folders = 1;
inline constexpr std::uint32_t flag_paths_follow = 2;

}  // namespace brindle
