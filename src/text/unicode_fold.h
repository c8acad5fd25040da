#pragma once

// Simple case folding of UTF-16, unit by unit: what "ignoring case" means in a search. A fold never changes how many
// units a character takes, so a position in the folded text is the position in the text.
//
// All functions are pure and may be called from any thread.

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle {

/// The fold of text[index] where that unit is not ASCII; a surrogate is folded together with its other half.
char16_t fold_beyond_ascii(std::u16string_view text, std::size_t index);

/// The unit that stands at `index` in the folded text.
inline char16_t fold_unit(std::u16string_view text, std::size_t index) {
  const char16_t unit = text[index];
  if (unit >= 0x80) return fold_beyond_ascii(text, index);
  const bool is_upper = static_cast<char16_t>(unit - u'A') < 26;
  return static_cast<char16_t>(unit | (is_upper ? 0x20 : 0));
}

/// The whole text folded: as many units as before.
std::u16string folded(std::u16string_view text);

/// The fold of one character.
char32_t fold_character(char32_t character);

/// Whether two names of files (bytes) differ, and differ in letter case alone.
bool differ_in_case_only(std::string_view a, std::string_view b);

constexpr bool is_high_surrogate(char16_t unit) {
  return (unit & 0xFC00U) == 0xD800U;
}
constexpr bool is_low_surrogate(char16_t unit) {
  return (unit & 0xFC00U) == 0xDC00U;
}

}  // namespace brindle
