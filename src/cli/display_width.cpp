#include "cli/display_width.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace brindle {
namespace {

constexpr UChar32 zero_width_joiner = 0x200D;

bool is_ascii(std::string_view text) {
  return std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

// The code point at `position`, which moves behind it.
UChar32 next_code_point(std::string_view text, std::size_t& position) {
  auto at = static_cast<std::int32_t>(position);
  UChar32 c = 0;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  U8_NEXT_OR_FFFD(bytes, at, static_cast<std::int32_t>(text.size()), c);
  position = static_cast<std::size_t>(at);
  return c;
}

// Marks, joiners, and the vowels and final consonants of decomposed Hangul: drawn with what stands before them.
bool is_without_width(UChar32 c) {
  const auto type = u_charType(c);
  return type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || type == U_FORMAT_CHAR ||
         (c >= 0x1160 && c <= 0x11FF);
}

bool is_attached(UChar32 c) {
  return c >= 0x300 && (is_without_width(c) || u_hasBinaryProperty(c, UCHAR_EMOJI_MODIFIER) != 0);
}

std::size_t width_of(UChar32 c) {
  if (c < 0x300) return 1;
  if (is_without_width(c)) return 0;
  const int width = u_getIntPropertyValue(c, UCHAR_EAST_ASIAN_WIDTH);
  return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace

std::size_t display_width(std::string_view text) {
  if (is_ascii(text)) return text.size();
  std::size_t width = 0;
  for (std::size_t i = 0; i < text.size();) width += width_of(next_code_point(text, i));
  return width;
}

std::string fit_end(std::string_view text, std::size_t columns) {
  std::size_t width = display_width(text);
  if (width <= columns) return std::string(text);
  std::size_t start = 0;
  while (start < text.size() && width + 1 > columns) width -= width_of(next_code_point(text, start));
  return "…" + std::string(text.substr(start));
}

bool has_right_to_left(std::string_view text) {
  if (is_ascii(text)) return false;
  for (std::size_t i = 0; i < text.size();) {
    const auto direction = u_charDirection(next_code_point(text, i));
    if (direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC) return true;
  }
  return false;
}

std::size_t character_start(std::string_view text, std::size_t position) {
  while (position > 0 && position < text.size()) {
    std::size_t start = position;
    while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0U) == 0x80U) --start;
    std::size_t behind = start;
    const bool attached = is_attached(next_code_point(text, behind));
    std::size_t before = start;
    while (before > 0 && (static_cast<unsigned char>(text[--before]) & 0xC0U) == 0x80U) {
    }
    std::size_t joiner = before;
    if (start == 0 || (!attached && next_code_point(text, joiner) != zero_width_joiner)) return start;
    position = before;
  }
  return position;
}

}  // namespace brindle
