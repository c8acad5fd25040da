#include "text/name_fold.h"

#include <unicode/unorm2.h>

#include <algorithm>
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

// Below the combining marks every text is in its composed form.
bool may_be_decomposed(std::u16string_view text) {
  return std::ranges::any_of(text, [](char16_t unit) { return unit >= 0x300; });
}

void fold_name(std::string_view name, std::u16string& folded) {
  thread_local std::u16string text;
  text.clear();
  append_decoded(name, text);
  if (may_be_decomposed(text)) text = normalized(text, unorm2_getNFCInstance);
  folded.resize(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) folded[i] = fold_unit(text, i);
}

}  // namespace

std::uint64_t folded_name_hash(std::string_view name, std::uint64_t seed) {
  std::uint64_t hash = seed;
  if (hash_ascii(name, hash)) return hash;
  thread_local std::u16string text;
  fold_name(name, text);
  const bool is_ascii =
      std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; });  // some letters fold to it
  if (!is_ascii) return hash_bytes({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)}, seed);
  hash = seed;
  hash_ascii(to_utf8(text), hash);
  return hash;
}

bool are_alike(std::string_view a, std::string_view b) {
  thread_local std::u16string first;
  thread_local std::u16string second;
  if (a == b) return true;
  fold_name(a, first);
  fold_name(b, second);
  return first == second;
}

std::string in_other_form(std::string_view name) {
  const std::u16string text = decode_file_name(name);
  std::u16string other = normalized(text, unorm2_getNFDInstance);
  if (other == text) other = normalized(text, unorm2_getNFCInstance);
  std::string bytes;
  return encode_path(other, bytes) ? bytes : std::string(name);
}

}  // namespace brindle
