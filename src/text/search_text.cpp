#include "text/search_text.h"

#include <algorithm>
#include <cstddef>

#include "text/unicode_fold.h"

namespace brindle {
namespace {

std::vector<std::uint32_t> fallbacks(std::u16string_view pattern) {
  std::vector<std::uint32_t> fallback(pattern.size(), 0);
  std::uint32_t matched = 0;
  for (std::size_t i = 1; i < pattern.size(); ++i) {
    while (matched > 0 && pattern[i] != pattern[matched]) matched = fallback[matched - 1];
    if (pattern[i] == pattern[matched]) ++matched;
    fallback[i] = matched;
  }
  return fallback;
}

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

SearchText::SearchText(std::u16string_view text, bool case_sensitive)
    : pattern_(case_sensitive ? std::u16string(text) : folded(text)),
      fallback_(fallbacks(pattern_)),
      case_sensitive_(case_sensitive),
      may_split_(!text.empty() && (is_low_surrogate(text.front()) || is_high_surrogate(text.back()))) {}

bool SearchText::splits_character(std::u16string_view text, std::size_t start) const {
  const auto inside_pair = [text](std::size_t i) {
    return i > 0 && i < text.size() && is_high_surrogate(text[i - 1]) && is_low_surrogate(text[i]);
  };
  return inside_pair(start) || inside_pair(start + size());
}

template <bool case_sensitive>
std::size_t SearchText::find_as(std::u16string_view text, std::size_t from) const {
  const char16_t first = pattern_.front();
  std::size_t matched = 0;
  for (std::size_t i = from; i < text.size(); ++i) {
    const char16_t unit = case_sensitive ? text[i] : fold_unit(text, i);
    while (matched > 0 && unit != pattern_[matched]) matched = fallback_[matched - 1];
    if (matched == 0 && unit != first) continue;
    if (++matched < pattern_.size()) continue;
    const std::size_t start = i + 1 - matched;
    if (!may_split_ || !splits_character(text, start)) return start;
    matched = fallback_[matched - 1];
  }
  return npos;
}

std::size_t SearchText::find(std::u16string_view text, std::size_t from) const {
  if (pattern_.empty() || pattern_.size() > text.size()) return npos;
  return case_sensitive_ ? find_as<true>(text, from) : find_as<false>(text, from);
}

std::size_t SearchText::find_nth(std::u16string_view text, std::int64_t n, std::size_t from) const {
  if (n < 1) return npos;
  std::size_t start = find(text, from);
  for (std::int64_t found = 1; start != npos && found < n; ++found) start = find(text, start + size());
  return start;
}

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
