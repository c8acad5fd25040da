#include "cli/terminal_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>

#include "platform/file_name.h"

namespace brindle {
namespace {

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
