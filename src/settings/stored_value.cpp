#include "settings/stored_value.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace brindle {
namespace {

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

std::u16string decimal_text(std::int32_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
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

// `Value` is what a property list holds for a member of this kind.
template <class Value, class Member>
bool restore_as_is(Member& member, const PropertyValue& value) {
  const Value* found = value.get_if<Value>();
  if (found) member = *found;
  return found != nullptr;
}

}  // namespace

PropertyValue stored(bool flag) {
  return flag ? u"1" : u"0";
}
PropertyValue stored(std::int32_t number) {
  return decimal_text(number);
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
  return restore_as_is<std::u16string>(text, value);
}
bool restore(Date& date, const PropertyValue& value) {
  return restore_as_is<Date>(date, value);
}

}  // namespace brindle
