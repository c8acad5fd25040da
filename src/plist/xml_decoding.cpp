#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <optional>

#include "plist/xml_tokens.h"
#include "text/text_encoding.h"

// The characters of a document, whatever its encoding.

namespace brindle {
namespace {

using namespace std::string_view_literals;

bool is_utf16(std::string_view bytes) {
  return bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("<\0"sv) ||
         bytes.starts_with("\0<"sv);
}

bool is_high(char16_t c) {
  return (c & 0xFC00U) == 0xD800U;
}
bool is_low(char16_t c) {
  return (c & 0xFC00U) == 0xDC00U;
}

bool is_well_formed(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (is_low(text[i])) return false;
    if (is_high(text[i]) && (++i == text.size() || !is_low(text[i]))) return false;
  }
  return true;
}

// What the XML declaration says, in capitals; "" when it says nothing.
std::string declared_encoding(std::string_view bytes) {
  if (!bytes.starts_with("<?xml")) return {};
  const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
  const std::size_t key = declaration.find("encoding");
  const std::size_t start = key == std::string_view::npos ? key : declaration.find_first_of("\"'", key);
  if (start == std::string_view::npos) return {};
  std::string name(declaration.substr(start + 1, declaration.find(declaration[start], start + 1) - start - 1));
  std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return name;
}

Result<std::u16string> decode_wide(std::string_view bytes) {
  const bool is_whole = bytes.size() % 2 == 0;
  std::u16string text = decode_utf16(bytes, bytes.front() == '\0');
  if (!is_whole || !is_well_formed(text)) return Status("it is no valid UTF-16 text");
  return text;
}

}  // namespace

Result<std::u16string> decode_xml(std::string_view bytes) {
  if (is_utf16(bytes)) return decode_wide(bytes);
  if (bytes.starts_with("\xEF\xBB\xBF"sv)) bytes.remove_prefix(3);
  const std::string encoding = declared_encoding(bytes);
  if (encoding == "ISO-8859-1") return decode_latin1(bytes);
  // Editors that save as UTF-8 may leave a declaration of UTF-16 as it is.
  const std::string_view known[] = {"", "UTF-8", "US-ASCII", "ASCII", "UTF-16"};
  if (std::ranges::find(known, encoding) == std::end(known)) {
    return Status(fmt::format("its encoding, {:.40}, is not one that is read here; save it as UTF-8", encoding));
  }
  std::optional<std::u16string> decoded = decode_valid_utf8(bytes);
  if (!decoded) return Status("it is no valid UTF-8 text");
  return std::move(*decoded);
}

}  // namespace brindle
