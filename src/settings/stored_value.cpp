#include "settings/stored_value.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "plist/scalar_text.h"
#include "text/number_text.h"

namespace brindle {
namespace {

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

std::optional<std::u16string> text_of_real(double number) {
  constexpr double exact = 9007199254740992.0;  // 2^53: up to there a whole number is one
  if (!std::isfinite(number)) return std::nullopt;
  if (std::abs(number) < exact && std::trunc(number) == number) return decimal_text(static_cast<std::int64_t>(number));
  return key_text(real_text(number));
}

std::optional<std::int32_t> number_of(const PropertyValue& value) {
  if (const auto* text = value.get_if<std::u16string>()) return integer_value(*text);
  if (const auto* flag = value.get_if<bool>()) return *flag ? 1 : 0;
  if (const auto* number = value.get_if<std::int64_t>()) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(*number, lowest, highest));
  }
  if (const auto* number = value.get_if<double>()) {
    return std::isnan(*number) ? 0 : static_cast<std::int32_t>(std::clamp<double>(*number, lowest, highest));
  }
  return std::nullopt;
}

}  // namespace

PropertyValue stored(bool flag) {
  return flag ? u"1" : u"0";
}
PropertyValue stored(std::int32_t number) {
  return decimal_text(number);
}

std::optional<std::u16string> scalar_text(const PropertyValue& value) {
  if (const auto* text = value.get_if<std::u16string>()) return *text;
  if (const auto* flag = value.get_if<bool>()) return *flag ? u"1" : u"0";
  if (const auto* number = value.get_if<std::int64_t>()) return decimal_text(*number);
  const auto* number = value.get_if<double>();
  return number ? text_of_real(*number) : std::nullopt;
}

bool restore(std::int32_t& number, const PropertyValue& value) {
  const std::optional<std::int32_t> found = number_of(value);
  number = found.value_or(number);
  return found.has_value();
}

bool restore(bool& flag, const PropertyValue& value) {
  std::int32_t number = flag ? 1 : 0;
  const bool restored = restore(number, value);
  flag = number != 0;
  return restored;
}

bool restore(Text& text, const PropertyValue& value) {
  std::optional<std::u16string> found = scalar_text(value);
  if (found) text = std::move(*found);
  return found.has_value();
}
bool restore(Date& date, const PropertyValue& value) {
  const Date* found = value.get_if<Date>();
  if (found) date = *found;
  return found != nullptr;
}

}  // namespace brindle
