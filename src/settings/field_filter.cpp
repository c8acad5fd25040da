#include "settings/field_filter.h"

#include <algorithm>

#include "text/number_text.h"

namespace brindle {
namespace {

constexpr std::int32_t largest_number = 300;

bool is_decimal_number(std::u16string_view text) {
  const bool digits = std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
  const bool leading_zero = text.size() > 1 && text.front() == u'0';
  return digits && !leading_zero && integer_value(text) <= largest_number;
}

}  // namespace

CustomTextFieldFormatter::Answer CustomTextFieldFormatter::check(std::u16string_view text) const {
  if (std::ssize(text) > maximumLength()) return {false, false};
  if (text.empty()) return {true, true};
  const bool accepted = is_decimal_number(text);
  return {accepted, !accepted};
}

std::u16string numeric_field_text(std::u16string_view text, std::int32_t tag) {
  const std::int32_t value = integer_value(text);
  return decimal_text(value != 0 ? value : tag);
}

}  // namespace brindle
