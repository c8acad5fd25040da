#include "platform/byte_text.h"

#include <cstddef>
#include <cstdint>

#include "platform/ascii.h"

namespace brindle {
namespace {

bool is_unreserved(char c) {
  return (c >= '0' && c <= '9') || is_ascii_letter(c) || c == '-' || c == '.' || c == '_' || c == '~' || c == '/';
}

int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

void append_percent_encoded(std::string_view bytes, std::string& text) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  for (const char c : bytes) {
    if (is_unreserved(c)) {
      text.push_back(c);
    } else {
      const auto byte = static_cast<unsigned char>(c);
      text.push_back('%');
      text.push_back(digits[byte >> 4U]);
      text.push_back(digits[byte & 0xFU]);
    }
  }
}

bool percent_decode(std::string_view text, std::string& bytes) {
  bytes.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      bytes.push_back(text[i]);
      continue;
    }
    if (i + 2 >= text.size()) return false;
    const int high = hex_value(text[i + 1]);
    const int low = hex_value(text[i + 2]);
    if (high < 0 || low < 0) return false;
    bytes.push_back(static_cast<char>(high * 16 + low));
    i += 2;
  }
  return true;
}

void append_base64(std::string_view bytes, std::string& text) {
  constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::string_view group = bytes.substr(i, 3);
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      bits = bits << 8U | (k < group.size() ? static_cast<unsigned char>(group[k]) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) text += k > group.size() ? '=' : digits[bits >> (18U - 6U * k) & 63U];
  }
}

}  // namespace brindle
