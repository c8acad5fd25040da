#include "platform/file_name.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace brindle {

void append_utf8(char32_t c, std::string& bytes) {
  const auto put = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0U | (c >> 6U));
    put(0x80U | (c & 0x3FU));
  } else if (c < 0x10000) {
    put(0xE0U | (c >> 12U));
    put(0x80U | ((c >> 6U) & 0x3FU));
    put(0x80U | (c & 0x3FU));
  } else {
    put(0xF0U | (c >> 18U));
    put(0x80U | ((c >> 12U) & 0x3FU));
    put(0x80U | ((c >> 6U) & 0x3FU));
    put(0x80U | (c & 0x3FU));
  }
}

namespace {

constexpr char32_t raw_byte_base = 0xEF00;

constexpr bool is_raw_byte(char32_t c) {
  return c >= 0xEF80 && c <= 0xEFFF;
}
constexpr bool is_high_surrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool is_low_surrogate(char32_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}

unsigned char byte_at(std::string_view bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}

struct Sequence {
  char32_t code_point = 0;
  std::size_t length = 0;  // 0: not valid UTF-8
};

// Table 3-7 of the Unicode standard: no overlong forms, no surrogates, nothing above U+10FFFF.
Sequence read_sequence(std::string_view rest) {
  const unsigned lead = byte_at(rest, 0);
  const std::size_t length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
  if (length == 0 || rest.size() < length) return {};
  char32_t c = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned next = byte_at(rest, i);
    if ((next & 0xC0U) != 0x80U) return {};
    c = (c << 6U) | (next & 0x3FU);
  }
  const bool too_small = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
  if (too_small || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return {};
  return {c, length};
}

void append_code_point(char32_t c, std::u16string& text) {
  if (c < 0x10000) {
    text.push_back(static_cast<char16_t>(c));
  } else {
    text.push_back(static_cast<char16_t>(0xD7C0 + (c >> 10U)));
    text.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FFU)));
  }
}

std::size_t ascii_prefix(std::string_view bytes, std::size_t from) {
  std::size_t i = from;
  for (std::uint64_t word = 0; i + 8 <= bytes.size(); i += 8) {
    std::memcpy(&word, bytes.data() + i, 8);
    if ((word & 0x8080808080808080U) != 0) break;
  }
  while (i < bytes.size() && byte_at(bytes, i) < 0x80) ++i;
  return i;
}

std::size_t append_ascii(std::string_view bytes, std::size_t from, std::u16string& text) {
  const std::size_t end = ascii_prefix(bytes, from);
  const std::size_t old_size = text.size();
  text.resize(old_size + (end - from));
  for (std::size_t i = from; i < end; ++i) text[old_size + i - from] = static_cast<char16_t>(byte_at(bytes, i));
  return end;
}

// One code point from text[i], advancing i; an unpaired surrogate comes back as itself.
char32_t next_code_point(std::u16string_view text, std::size_t& i) {
  const char32_t c = text[i++];
  if (!is_high_surrogate(c) || i == text.size() || !is_low_surrogate(text[i])) return c;
  return 0x10000 + ((c - 0xD800) << 10U) + (text[i++] - 0xDC00U);
}

constexpr bool is_surrogate(char32_t c) {
  return is_high_surrogate(c) || is_low_surrogate(c);
}

// Appends everything that is plain ASCII from text[i] on, and returns where it stopped.
std::size_t encode_ascii(std::u16string_view text, std::size_t i, std::string& bytes) {
  std::size_t end = i;
  while (end < text.size() && text[end] < 0x80) ++end;
  const std::size_t old_size = bytes.size();
  bytes.resize(old_size + (end - i));
  for (std::size_t k = i; k < end; ++k) bytes[old_size + k - i] = static_cast<char>(text[k]);
  return end;
}

// False at the first unpaired surrogate.
bool encode_text(std::u16string_view text, std::string& bytes) {
  for (std::size_t i = encode_ascii(text, 0, bytes); i < text.size(); i = encode_ascii(text, i, bytes)) {
    const char32_t c = next_code_point(text, i);
    if (is_surrogate(c)) return false;
    if (is_raw_byte(c)) {
      bytes.push_back(static_cast<char>(c - raw_byte_base));
    } else {
      append_utf8(c, bytes);
    }
  }
  return true;
}

}  // namespace

void append_decoded(std::string_view bytes, std::u16string& text) {
  for (std::size_t i = append_ascii(bytes, 0, text); i < bytes.size(); i = append_ascii(bytes, i, text)) {
    const Sequence sequence = read_sequence(bytes.substr(i));
    const std::size_t length = sequence.length == 0 ? 1 : sequence.length;
    if (sequence.length == 0 || is_raw_byte(sequence.code_point)) {
      for (std::size_t k = 0; k < length; ++k)
        text.push_back(static_cast<char16_t>(raw_byte_base + byte_at(bytes, i + k)));
    } else {
      append_code_point(sequence.code_point, text);
    }
    i += length;
  }
}

std::u16string decode_file_name(std::string_view bytes) {
  std::u16string text;
  append_decoded(bytes, text);
  return text;
}

std::size_t valid_utf8_prefix(std::string_view bytes) {
  std::size_t i = ascii_prefix(bytes, 0);
  while (i < bytes.size()) {
    const std::size_t length = read_sequence(bytes.substr(i)).length;
    if (length == 0) break;
    i = ascii_prefix(bytes, i + length);
  }
  return i;
}

NameFault encode_file_name(std::u16string_view name, std::string& bytes, std::size_t limit) {
  bytes.clear();
  if (name.empty()) return NameFault::empty;
  if (name == u"." || name == u"..") return NameFault::dot;
  if (!encode_text(name, bytes)) return NameFault::unpaired_surrogate;
  if (std::memchr(bytes.data(), 0, bytes.size()) != nullptr) return NameFault::nul;
  if (std::memchr(bytes.data(), '/', bytes.size()) != nullptr) return NameFault::separator;
  return bytes.size() > limit ? NameFault::too_long : NameFault::none;
}

bool encode_path(std::u16string_view path, std::string& bytes) {
  bytes.clear();
  return encode_text(path, bytes) && bytes.find('\0') == std::string::npos;
}

std::string_view describe(NameFault fault) {
  switch (fault) {
    case NameFault::none:
      return "";
    case NameFault::empty:
      return "the new name is empty";
    case NameFault::dot:
      return "\".\" and \"..\" cannot be names";
    case NameFault::nul:
      return "the new name holds a NUL character";
    case NameFault::separator:
      return "the new name holds a \"/\"";
    case NameFault::unpaired_surrogate:
      return "a character of the new name was split in two";
    case NameFault::too_long:
      return "the new name is too long for this disk";
  }
  return "";
}

std::string to_utf8(std::u16string_view text) {
  std::string bytes;
  for (std::size_t i = encode_ascii(text, 0, bytes); i < text.size(); i = encode_ascii(text, i, bytes)) {
    const char32_t c = next_code_point(text, i);
    append_utf8(is_surrogate(c) ? U'\uFFFD' : c, bytes);
  }
  return bytes;
}

}  // namespace brindle
