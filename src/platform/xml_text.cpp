#include "platform/xml_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/file_name.h"

namespace brindle {
namespace {

enum class ByteClass : unsigned char { plain, reference, control, beyond_ascii };

constexpr std::array<ByteClass, 256> byte_classes = [] {
  std::array<ByteClass, 256> classes{};
  for (std::size_t i = 0; i < 0x20; ++i) classes[i] = ByteClass::control;
  for (std::size_t i = 0x80; i < 256; ++i) classes[i] = ByteClass::beyond_ascii;
  for (const char c : {'\t', '\n', '\r', '&', '<', '>', '"'})
    classes[static_cast<unsigned char>(c)] = ByteClass::reference;
  return classes;
}();

ByteClass class_of(char c) {
  return byte_classes[static_cast<unsigned char>(c)];
}

std::string_view reference_for(char c) {
  switch (c) {
    case '\t':
      return "&#9;";
    case '\n':
      return "&#10;";
    case '\r':
      return "&#13;";
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    default:
      return "&quot;";
  }
}

constexpr std::string_view replacement_character = "\xEF\xBF\xBD";

// Well-formed two-byte sequences and those three-byte ones that want no closer look: nearly everything in file names.
bool is_common_text(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    const std::size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead > 0xE0 && lead < 0xED ? 3 : 0;
    if (length == 0 || i + length > bytes.size()) return false;
    for (std::size_t k = 1; k < length; ++k) {
      if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0U) != 0x80U) return false;
    }
    i += length;
  }
  return true;
}

// `bytes` are all above ASCII.
bool append_beyond_ascii(std::string_view bytes, std::string& xml) {
  if (is_common_text(bytes)) {
    xml += bytes;
    return true;
  }
  std::u16string text = decode_file_name(bytes);
  bool representable = true;
  for (char16_t& c : text) {
    if (c < 0xFFFE) continue;
    c = u'\uFFFD';
    representable = false;
  }
  xml += to_utf8(text);
  return representable;
}

}  // namespace

bool append_xml_attribute(std::string_view bytes, std::string& xml) {
  bool representable = true;
  for (std::size_t i = 0; i < bytes.size();) {
    const ByteClass kind = class_of(bytes[i]);
    std::size_t end = i + 1;
    while (end < bytes.size() && class_of(bytes[end]) == kind) ++end;
    const std::string_view run = bytes.substr(i, end - i);
    if (kind == ByteClass::plain) {
      xml += run;
    } else if (kind == ByteClass::beyond_ascii) {
      representable = append_beyond_ascii(run, xml) && representable;
    } else {
      for (const char c : run) xml += kind == ByteClass::reference ? reference_for(c) : replacement_character;
      representable = representable && kind == ByteClass::reference;
    }
    i = end;
  }
  return representable;
}

std::size_t most_attribute_bytes(std::string_view bytes) {
  // The longest reference is &quot;, and a byte that is no text becomes three.
  static constexpr std::array<unsigned char, 4> most = {1, 6, replacement_character.size(), 3};
  std::size_t sum = 0;
  for (const char c : bytes) sum += most[static_cast<std::size_t>(class_of(c))];
  return sum;
}

bool is_surely_representable(std::string_view bytes) {
  constexpr char lead_of_noncharacters = '\xEF';
  return std::ranges::none_of(bytes,
                              [](char c) { return class_of(c) == ByteClass::control || c == lead_of_noncharacters; });
}

// U+EF80…U+EFBF is EE BE 80…BF, U+EFC0…U+EFFF is EE BF 80…BF.
void restore_bytes(std::string& text) {
  std::size_t kept = text.find('\xEE');
  for (std::size_t i = kept; i < text.size(); ++kept) {
    const bool stands_for_byte =
        text[i] == '\xEE' && i + 2 < text.size() && (text[i + 1] == '\xBE' || text[i + 1] == '\xBF');
    if (stands_for_byte) {
      const unsigned high = text[i + 1] == '\xBF' ? 0xC0U : 0x80U;
      text[kept] = static_cast<char>(high | (static_cast<unsigned char>(text[i + 2]) & 0x3FU));
    } else {
      text[kept] = text[i];
    }
    i += stands_for_byte ? 3 : 1;
  }
  if (kept != std::string::npos) text.resize(kept);
}

}  // namespace brindle
