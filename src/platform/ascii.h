#pragma once

// ASCII letters, whatever the locale; any other byte is equal to itself alone. Pure; any thread.

#include <algorithm>
#include <string>
#include <string_view>

namespace brindle {

constexpr bool is_ascii_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr char ascii_lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string in_lower_case(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), ascii_lower);
  return lower;
}

/// With capitals for small letters, and the other way round.
inline std::string in_other_letters(std::string_view text) {
  std::string other(text);
  for (char& c : other) c = is_ascii_letter(c) ? static_cast<char>(c ^ 0x20) : c;
  return other;
}

inline bool equal_ignoring_case(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, ascii_lower, ascii_lower);
}
inline bool begins_ignoring_case(std::string_view text, std::string_view start) {
  return equal_ignoring_case(text.substr(0, start.size()), start);
}
inline bool ends_ignoring_case(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && equal_ignoring_case(text.substr(text.size() - end.size()), end);
}

}  // namespace brindle
