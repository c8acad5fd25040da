#include "text/text_encoding.h"

#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <utility>

namespace brindle {
namespace {

constexpr char16_t replacement = 0xFFFD;

// Longer than any text that could become part of a name.
constexpr std::size_t length_limit = std::numeric_limits<std::int32_t>::max() / 4;

// 0x80 to 0x9F.
constexpr std::array<char16_t, 32> windows_characters = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

char16_t windows_character(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code >= 0x80 && code < 0xA0 ? windows_characters[code - 0x80U] : char16_t{code};
}

bool is_ascii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// False when `strict` and the bytes are not valid.
bool decode_utf8_into(std::string_view bytes, bool strict, std::u16string& text) {
  bytes = bytes.substr(0, length_limit);
  text.resize(bytes.size());
  std::int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(text.data(), static_cast<std::int32_t>(text.size()), &length, bytes.data(),
                       static_cast<std::int32_t>(bytes.size()), strict ? U_SENTINEL : replacement, nullptr, &status);
  text.resize(U_FAILURE(status) ? 0 : static_cast<std::size_t>(length));
  return U_SUCCESS(status);
}

bool has_high_byte_first(std::string_view bytes, bool otherwise) {
  std::array<std::size_t, 2> zeros{};
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    zeros[0] += bytes[i] == '\0' ? 1U : 0U;
    zeros[1] += bytes[i + 1] == '\0' ? 1U : 0U;
  }
  return zeros[0] == zeros[1] ? otherwise : zeros[0] > zeros[1];
}

}  // namespace

std::u16string decode_latin1(std::string_view bytes) {
  std::u16string text(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(), windows_character);
  return text;
}

std::optional<std::u16string> decode_valid_utf8(std::string_view bytes) {
  std::u16string text;
  return decode_utf8_into(bytes, true, text) ? std::optional(std::move(text)) : std::nullopt;
}

std::u16string decode_utf8(std::string_view bytes) {
  std::u16string text;
  decode_utf8_into(bytes, false, text);
  return text;
}

std::u16string decode_text(std::string_view bytes) {
  std::u16string text;
  if (is_ascii(bytes) || !decode_utf8_into(bytes, true, text)) text = decode_latin1(bytes);
  return text;
}

std::u16string decode_utf16(std::string_view bytes, bool big_endian) {
  using namespace std::string_view_literals;
  const bool marked = bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\xFF\xFE"sv);
  const bool high_first = marked ? bytes.front() == '\xFE' : has_high_byte_first(bytes, big_endian);
  if (marked) bytes.remove_prefix(2);
  std::u16string text(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto first = static_cast<unsigned char>(bytes[2 * i]);
    const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
    text[i] = static_cast<char16_t>(high_first ? first << 8U | second : second << 8U | first);
  }
  return text;
}

std::u16string decode_japanese(std::string_view bytes) {
  bytes = bytes.substr(0, length_limit);
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UConverter, void (*)(UConverter*)> converter(ucnv_open("ISO-2022-JP", &status), ucnv_close);
  if (U_FAILURE(status)) return decode_text(bytes);
  std::u16string text(bytes.size() * 2, u'\0');
  const std::int32_t length = ucnv_toUChars(converter.get(), text.data(), static_cast<std::int32_t>(text.size()),
                                            bytes.data(), static_cast<std::int32_t>(bytes.size()), &status);
  text.resize(U_FAILURE(status) ? 0 : static_cast<std::size_t>(length));
  return text;
}

std::u16string_view trimmed(std::u16string_view text) {
  // White space lies in the basic plane.
  while (!text.empty() && u_isUWhiteSpace(text.front()) != 0) text.remove_prefix(1);
  while (!text.empty() && u_isUWhiteSpace(text.back()) != 0) text.remove_suffix(1);
  return text;
}

}  // namespace brindle
