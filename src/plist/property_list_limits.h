#pragma once

// The bounds within which property lists and keyed archives are read, so that no file makes the program run out of
// stack, memory or time.

#include <cstddef>

namespace brindle {

/// Arrays and dictionaries within each other, the outermost counted. Also keeps recursion over a value that was read
/// within bounds.
inline constexpr std::size_t property_list_depth_limit = 128;
/// Values of one list, keys included. What several others refer to counts each time.
inline constexpr std::size_t property_list_value_limit = 1'000'000;
/// Bytes of all texts (as UTF-16) and data of one list.
inline constexpr std::size_t property_list_byte_limit = std::size_t{128} << 20;

/// What may still be read of one list; at first all that the limits allow, or less.
class PropertyListBudget {
 public:
  PropertyListBudget() = default;
  PropertyListBudget(std::size_t values, std::size_t bytes) : values_(values), bytes_(bytes) {}

  /// False when that is more than is left.
  bool take_values(std::size_t count) { return take(values_, count); }
  bool take_bytes(std::size_t count) { return take(bytes_, count); }

 private:
  static bool take(std::size_t& left, std::size_t count) {
    const bool enough = count <= left;
    left = enough ? left - count : 0;
    return enough;
  }

  std::size_t values_ = property_list_value_limit;
  std::size_t bytes_ = property_list_byte_limit;
};

}  // namespace brindle
