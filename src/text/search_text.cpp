#include "text/search_text.h"

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

}  // namespace brindle
