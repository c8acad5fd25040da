#pragma once

// What the reader and the writer of binary property lists both know of the format.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brindle::binary_list {

inline constexpr std::string_view header = "bplist00";
inline constexpr std::size_t trailer_size = 32;

/// The high half of a marker byte.
enum class Kind : std::uint8_t {
  simple = 0x0,  ///< 0x08 false, 0x09 true
  integer = 0x1,
  real = 0x2,
  date = 0x3,
  data = 0x4,
  ascii = 0x5,
  utf16 = 0x6,
  uid = 0x8,
  array = 0xA,
  dictionary = 0xD,
};

inline constexpr std::uint8_t false_marker = 0x08;
inline constexpr std::uint8_t true_marker = 0x09;
/// In the low half of a marker: the size follows as an integer object.
inline constexpr std::uint8_t size_follows = 0xF;

}  // namespace brindle::binary_list
