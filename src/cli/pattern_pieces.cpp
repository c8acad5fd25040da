#include "cli/pattern_pieces.h"

#include <algorithm>
#include <cstddef>

namespace brindle {
namespace {

bool is_letter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

std::u16string_view take(std::u16string_view& rest, std::size_t size) {
  const std::u16string_view taken = rest.substr(0, size);
  rest.remove_prefix(taken.size());
  return taken;
}

std::size_t part_size(std::u16string_view text) {
  return std::min(text.find_first_not_of(text.front()), text.size());
}

// Up to the next letter that is not quoted.
std::size_t separator_size(std::u16string_view text) {
  bool quoted = false;
  const auto end = std::ranges::find_if(text, [&](char16_t c) {
    if (c == u'\'') quoted = !quoted;
    return !quoted && is_letter(c);
  });
  return static_cast<std::size_t>(end - text.begin());
}

}  // namespace

std::optional<std::array<std::u16string, 5>> split_pattern(std::u16string_view pattern) {
  std::array<std::u16string, 5> pieces = {u"None", u"", u"None", u"", u"None"};
  if (pattern.empty() || !is_letter(pattern.front())) return std::nullopt;
  for (std::size_t i = 0; i < pieces.size() && !pattern.empty(); ++i) {
    const bool is_part = i % 2 == 0;
    pieces[i] = take(pattern, is_part ? part_size(pattern) : separator_size(pattern));
  }
  return pattern.empty() ? std::optional(pieces) : std::nullopt;
}

}  // namespace brindle
