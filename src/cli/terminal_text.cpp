#include "cli/terminal_text.h"

#include <fmt/format.h>

#include "platform/file_name.h"

namespace brindle {
namespace {

// Characters that show nothing but change how what follows is read: marks of direction, joiners of lines, byte order marks.
bool is_invisible(char16_t c) {
  return (c >= 0x80 && c < 0xA0) || c == 0xAD || c == 0x61C || c == 0x200E || c == 0x200F || (c >= 0x2028 && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF || (c >= 0xFFF9 && c <= 0xFFFB);
}

std::string escape_of(char16_t c) {
  switch (c) {
    case u'\n': return "\\n";
    case u'\t': return "\\t";
    case u'\r': return "\\r";
    case u'\\': return "\\\\";
    default: break;
  }
  if (c < 0x20 || c == 0x7F) return fmt::format("\\x{:02x}", static_cast<unsigned>(c));
  if (c >= 0xEF80 && c <= 0xEFFF) return fmt::format("\\x{:02x}", static_cast<unsigned>(c) - 0xEF00U);
  if (is_invisible(c)) return fmt::format("\\u{{{:x}}}", static_cast<unsigned>(c));
  return {};
}

}  // namespace

std::string escape_for_terminal(std::string_view bytes) {
  const std::u16string text = decode_file_name(bytes);
  std::string shown;
  std::size_t plain_from = 0;
  const auto flush = [&](std::size_t to) { shown += to_utf8(std::u16string_view(text).substr(plain_from, to - plain_from)); };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string escape = escape_of(text[i]);
    if (escape.empty()) continue;
    flush(i);
    shown += escape;
    plain_from = i + 1;
  }
  flush(text.size());
  return shown;
}

}  // namespace brindle
