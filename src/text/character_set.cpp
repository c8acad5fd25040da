#include "text/character_set.h"

#include <algorithm>
#include <cstddef>

#include "text/unicode_fold.h"

namespace brindle {
namespace {

// Whether text[i] and the unit after it are the halves of one character.
bool is_pair(std::u16string_view text, std::size_t i, bool reversed) {
  if (i + 1 == text.size()) return false;
  const char16_t high = reversed ? text[i + 1] : text[i];
  const char16_t low = reversed ? text[i] : text[i + 1];
  return is_high_surrogate(high) && is_low_surrogate(low);
}

// One character from text[i]; `size` receives its units.
char32_t character_at(std::u16string_view text, std::size_t i, bool reversed, std::size_t& size) {
  size = is_pair(text, i, reversed) ? 2 : 1;
  if (size == 1) return text[i];
  const char32_t high = reversed ? text[i + 1] : text[i];
  const char32_t low = reversed ? text[i] : text[i + 1];
  return 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00);
}

}  // namespace

CharacterSet::CharacterSet(std::u16string_view characters, bool case_sensitive) : case_sensitive_(case_sensitive) {
  std::size_t size = 0;
  for (std::size_t i = 0; i < characters.size(); i += size) {
    const char32_t character = character_at(characters, i, false, size);
    others_.push_back(case_sensitive ? character : fold_character(character));
  }
  std::sort(others_.begin(), others_.end());
  for (char32_t c = 0; c < ascii_.size(); ++c) {
    const char32_t spelling = case_sensitive ? c : fold_character(c);
    ascii_[c] = std::binary_search(others_.begin(), others_.end(), spelling);
  }
}

bool CharacterSet::contains(char32_t character) const {
  if (character < ascii_.size()) return ascii_[character];
  if (!case_sensitive_) character = fold_character(character);
  return std::binary_search(others_.begin(), others_.end(), character);
}

void CharacterSet::append_without(std::u16string_view text, bool reversed, std::u16string& out) const {
  std::size_t size = 0;
  for (std::size_t i = 0; i < text.size(); i += size) {
    if (!contains(character_at(text, i, reversed, size))) out.append(text.substr(i, size));
  }
}

}  // namespace brindle
