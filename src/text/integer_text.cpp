#include "text/integer_text.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace brindle {
namespace {

constexpr std::u16string_view blanks = u" \t\n\v\f\r";

}  // namespace

std::int32_t integer_value(std::u16string_view text) {
  constexpr std::int64_t limit = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
  std::size_t i = std::min(text.find_first_not_of(blanks), text.size());
  const bool negative = i < text.size() && text[i] == u'-';
  if (negative || (i < text.size() && text[i] == u'+')) ++i;
  std::int64_t value = 0;
  for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
    value = std::min(value * 10 + (text[i] - u'0'), limit);
  }
  return static_cast<std::int32_t>(negative ? -value : std::min(value, limit - 1));
}

std::u16string decimal_text(std::int64_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

}  // namespace brindle
