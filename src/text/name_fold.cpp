#include "text/name_fold.h"

#include <unicode/unorm2.h>

#include <cstring>

#include "platform/file_name.h"
#include "text/hash.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

constexpr std::uint64_t every_byte = 0x0101010101010101U;

// "A" to "Z" in eight ASCII bytes at once: the high bit of a byte is set by the first sum from "A" on, by the second
// from behind "Z" on.
constexpr std::uint64_t lowered(std::uint64_t word) {
  const std::uint64_t from_a = word + every_byte * (0x80 - 'A');
  const std::uint64_t behind_z = word + every_byte * (0x80 - 'Z' - 1);
  return word | ((from_a & ~behind_z & (every_byte * 0x80)) >> 2U);
}

// The hash of lowered ASCII; false when the name holds anything else.
bool hash_ascii(std::string_view name, std::uint64_t& hash) {
  constexpr std::uint64_t key = 0xA0761D6478BD642FU;
  std::uint64_t seen = 0;
  hash ^= name.size() * 0xE7037ED1A0B428DBU;
  while (!name.empty()) {
    const std::size_t part = std::min<std::size_t>(name.size(), 8);
    std::uint64_t word = 0;
    std::memcpy(&word, name.data(), part);
    seen |= word;
    hash = hash_detail::mix(hash ^ lowered(word & ~(every_byte * 0x80)), key);
    name.remove_prefix(part);
  }
  hash = hash_detail::mix(hash, 0x8EBC6AF09C88C6E3U);
  return (seen & (every_byte * 0x80)) == 0;
}

using Normalize = const UNormalizer2* (*)(UErrorCode*);

std::u16string normalized(std::u16string_view text, Normalize form) {
  UErrorCode error = U_ZERO_ERROR;
  const UNormalizer2* const normalizer = form(&error);
  const auto size = static_cast<std::int32_t>(text.size());
  const std::int32_t plain = unorm2_spanQuickCheckYes(normalizer, text.data(), size, &error);
  if (U_FAILURE(error) || plain == size) return std::u16string(text);
  std::u16string result(text.size() * 4, u'\0');  // no character takes more than that
  const std::int32_t length =
      unorm2_normalize(normalizer, text.data(), size, result.data(), static_cast<std::int32_t>(result.size()), &error);
  if (U_FAILURE(error)) return std::u16string(text);
  result.resize(static_cast<std::size_t>(length));
  return result;
}

std::u16string folded_name(std::string_view name) {
  return folded(normalized(decode_file_name(name), unorm2_getNFCInstance));
}

}  // namespace

std::uint64_t folded_name_hash(std::string_view name, std::uint64_t seed) {
  std::uint64_t hash = seed;
  if (hash_ascii(name, hash)) return hash;
  const std::string text = to_utf8(folded_name(name));  // some letters fold to ASCII
  hash = seed;
  return hash_ascii(text, hash) ? hash : hash_bytes(text, seed);
}

bool are_alike(std::string_view a, std::string_view b) {
  return a == b || folded_name(a) == folded_name(b);
}

std::string in_other_form(std::string_view name) {
  const std::u16string text = decode_file_name(name);
  std::u16string other = normalized(text, unorm2_getNFDInstance);
  if (other == text) other = normalized(text, unorm2_getNFCInstance);
  std::string bytes;
  return encode_path(other, bytes) ? bytes : std::string(name);
}

}  // namespace brindle
