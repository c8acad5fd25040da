#pragma once

// A fast hash of short byte strings for tables in memory. Not stable between versions, not for files.

#include <cstdint>
#include <cstring>
#include <string_view>

namespace brindle {

namespace hash_detail {
inline std::uint64_t mix(std::uint64_t a, std::uint64_t b) {
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}
}  // namespace hash_detail

/// Multiply-and-fold over eight bytes at a time, in the manner of wyhash.
inline std::uint64_t hash_bytes(std::string_view bytes, std::uint64_t seed = 0x9E3779B97F4A7C15U) {
  constexpr std::uint64_t key = 0xA0761D6478BD642FU;
  std::uint64_t hash = seed ^ (bytes.size() * 0xE7037ED1A0B428DBU);
  const char* at = bytes.data();
  std::size_t left = bytes.size();
  std::uint64_t word = 0;
  for (; left >= 8; left -= 8, at += 8) {
    std::memcpy(&word, at, 8);
    hash = hash_detail::mix(hash ^ word, key);
  }
  if (left > 0) {
    word = 0;
    std::memcpy(&word, at, left);
    hash = hash_detail::mix(hash ^ word, key);
  }
  return hash_detail::mix(hash, 0x8EBC6AF09C88C6E3U);
}

}  // namespace brindle
