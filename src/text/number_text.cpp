#include "text/number_text.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace brindle {
namespace {

constexpr std::u16string_view blanks = u" \t\n\v\f\r";

bool is_letter(char16_t unit) {
  return unit >= u'a' && unit <= u'z';
}

char16_t letter(std::int32_t index) {
  return static_cast<char16_t>(u'a' + index);
}

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

bool isAlphabeticNumericInRange(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), is_letter);
}

std::u16string nextAlphabeticNumber(std::u16string_view text, std::int32_t incrementBy) {
  std::u16string next(text);
  std::uint32_t carry = static_cast<std::uint32_t>(incrementBy);
  char16_t wrapped = letter(incrementBy - 1);
  for (std::size_t i = next.size(); i-- > 0; wrapped = u'a') {
    next[i] = static_cast<char16_t>(next[i] + carry);
    carry = next[i] > u'z' ? 1 : 0;
    if (carry != 0) next[i] = wrapped;
  }
  // The leading place is empty until something is carried into it.
  if (carry != 0 && !text.empty()) next.insert(next.begin(), u'a');
  return next;
}

std::u16string previousAlphabeticNumber(std::u16string_view text, std::int32_t decrementBy) {
  std::u16string previous(text);
  std::int32_t borrow = decrementBy;
  char16_t wrapped = static_cast<char16_t>(u'z' + 1 - decrementBy);
  for (std::size_t i = previous.size(); i-- > 0; wrapped = u'z') {
    const std::int32_t digit = previous[i] - borrow;
    borrow = digit < u'a' ? 1 : 0;
    previous[i] = borrow != 0 ? wrapped : static_cast<char16_t>(digit);
  }
  if (borrow != 0 && !text.empty()) previous.erase(0, 1);
  return previous;
}

// After one step up no unit is above "z". The leftmost unit that is below "a" gets into range by carries alone; each
// carry comes when everything to its right has just run over, so what stands there when it arrives at "a" is known.
void step_up_into_range(std::u16string& counter, std::int32_t step) {
  counter = nextAlphabeticNumber(counter, step);
  const auto low = std::find_if_not(counter.begin(), counter.end(), is_letter);
  if (low == counter.end()) return;
  if (low == counter.end() - 1) {
    while (*low < u'a') *low = static_cast<char16_t>(*low + step);
    return;
  }
  std::fill(low, counter.end() - 1, u'a');
  counter.back() = letter(step - 1);
}

// The mirror image: after one step down no unit is below "a", and the leftmost one above "z" waits for borrows.
void step_down_into_range(std::u16string& counter, std::int32_t step) {
  const bool has_letters = !counter.empty();
  counter = previousAlphabeticNumber(counter, step);
  if (counter.empty() && has_letters) counter.push_back(static_cast<char16_t>(u'z' + 1 - step));
  const auto high = std::find_if_not(counter.begin(), counter.end(), is_letter);
  if (high == counter.end()) return;
  if (high == counter.end() - 1) {
    *high = static_cast<char16_t>(*high - (*high - u'z' + step - 1) / step * step);
    return;
  }
  std::fill(high, counter.end() - 1, u'z');
  counter.back() = static_cast<char16_t>(u'z' + 1 - step);
}

}  // namespace brindle
