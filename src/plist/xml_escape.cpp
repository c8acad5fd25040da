#include "plist/xml_escape.h"

#include <fmt/format.h>

#include <cstddef>

#include "platform/file_name.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

constexpr char16_t mark = 0xEF7F;

bool is_impossible(char16_t c) {
  return (c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') || c >= 0xFFFE || is_high_surrogate(c) ||
         is_low_surrogate(c) || c == mark;
}

bool is_pair(std::u16string_view text, std::size_t i) {
  return i + 1 < text.size() && is_high_surrogate(text[i]) && is_low_surrogate(text[i + 1]);
}

void append_unit(char16_t c, std::string& xml) {
  switch (c) {
    case u'&':
      xml += "&amp;";
      return;
    case u'<':
      xml += "&lt;";
      return;
    case u'>':
      xml += "&gt;";
      return;
    case u'\r':  // a bare one would be read as a line feed
      xml += "&#13;";
      return;
    default:
      append_utf8(is_impossible(c) ? mark : c, xml);
      if (is_impossible(c)) xml += fmt::format("{:04X}", static_cast<unsigned>(c));
  }
}

// The unit that four digits name, when it is one that is written so; else 'A', which is not.
char16_t unit_of(std::u16string_view digits) {
  constexpr std::u16string_view hexadecimal = u"0123456789ABCDEF";
  if (digits.size() < 4) return u'A';
  std::size_t unit = 0;
  for (const char16_t c : digits.substr(0, 4)) {
    const std::size_t value = hexadecimal.find(c);
    if (value == std::u16string_view::npos) return u'A';
    unit = unit * 16 + value;
  }
  return static_cast<char16_t>(unit);
}

}  // namespace

void append_xml_text(std::u16string_view text, std::string& xml) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (is_pair(text, i)) {
      append_utf8(0x10000U + ((text[i] & 0x3FFU) << 10U | (text[i + 1] & 0x3FFU)), xml);
      ++i;
    } else {
      append_unit(text[i], xml);
    }
  }
}

void append_xml_attribute_text(std::u16string_view text, std::string& xml) {
  std::string content;
  append_xml_text(text, content);
  for (const char c : content) {
    // White space of an attribute would be read as blanks.
    if (c == '"' || c == '\t' || c == '\n') {
      xml += fmt::format("&#{};", static_cast<unsigned>(c));
    } else {
      xml += c;
    }
  }
}

std::u16string restore_xml_text(std::u16string text) {
  const std::size_t first = text.find(mark);
  if (first == std::u16string::npos) return text;
  std::u16string restored = text.substr(0, first);
  for (std::size_t i = first; i < text.size(); ++i) {
    const char16_t unit = text[i] == mark ? unit_of(std::u16string_view(text).substr(i + 1)) : u'A';
    const bool stands_for_unit = is_impossible(unit);
    restored += stands_for_unit ? unit : text[i];
    i += stands_for_unit ? 4 : 0;
  }
  return restored;
}

}  // namespace brindle
