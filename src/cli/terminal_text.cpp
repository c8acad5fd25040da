#include "cli/terminal_text.h"

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/file_name.h"

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

// Characters that show nothing but change how what follows is read: marks of direction, joiners of lines, byte order
// marks.
bool is_invisible(char16_t c) {
  return (c >= 0x80 && c < 0xA0) || c == 0xAD || c == 0x61C || c == 0x200E || c == 0x200F ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF || (c >= 0xFFF9 && c <= 0xFFFB);
}

std::string escape_of(char16_t c) {
  switch (c) {
    case u'\n':
      return "\\n";
    case u'\t':
      return "\\t";
    case u'\r':
      return "\\r";
    case u'\\':
      return "\\\\";
    default:
      break;
  }
  if (c < 0x20 || c == 0x7F) return fmt::format("\\x{:02x}", static_cast<unsigned>(c));
  if (c >= 0xEF80 && c <= 0xEFFF) return fmt::format("\\x{:02x}", static_cast<unsigned>(c) - 0xEF00U);
  if (is_invisible(c)) return fmt::format("\\u{{{:x}}}", static_cast<unsigned>(c));
  return {};
}

bool is_plain(std::string_view bytes) {
  return std::ranges::all_of(bytes, [](char c) { return c >= 0x20 && c < 0x7F && c != '\\'; });
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

void append_wrapped(std::string_view text, std::size_t indent, std::size_t width, std::string& out) {
  std::size_t column = indent;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    const std::size_t size = display_width(word);
    if (column > indent && column + 1 + size > width) {
      out.append("\n").append(indent, ' ');
      column = indent;
    }
    if (column > indent) {
      out += ' ';
      ++column;
    }
    out += word;
    column += size;
  }
  out += '\n';
}

void append_escaped_for_terminal(std::string_view bytes, std::string& text) {
  if (is_plain(bytes)) {
    text += bytes;
    return;
  }
  const std::u16string decoded = decode_file_name(bytes);
  std::size_t plain_from = 0;
  const auto append_plain = [&](std::size_t to) {
    text += to_utf8(std::u16string_view(decoded).substr(plain_from, to - plain_from));
  };
  for (std::size_t i = 0; i < decoded.size(); ++i) {
    const std::string escape = escape_of(decoded[i]);
    if (escape.empty()) continue;
    append_plain(i);
    text += escape;
    plain_from = i + 1;
  }
  append_plain(decoded.size());
}

std::string escape_for_terminal(std::string_view bytes) {
  std::string text;
  append_escaped_for_terminal(bytes, text);
  return text;
}

void append_on_one_line(std::string_view bytes, std::string& text) {
  const std::size_t start = text.size();
  text += bytes;
  for (std::size_t at = start; at < text.size(); ++at) {
    if (text[at] == '\n') text.replace(at++, 1, "\\n");
    if (text[at] == '\r') text.replace(at++, 1, "\\r");
  }
}

}  // namespace brindle
