#include "plist/scalar_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace brindle {
namespace {

// No number's text comes near this length, except to make somebody work.
constexpr std::size_t number_length_limit = 400;

std::optional<std::string> ascii_of(std::u16string_view text) {
  const auto is_printable = [](char16_t c) { return c > 0x20 && c < 0x7F; };
  if (text.size() > number_length_limit || !std::ranges::all_of(text, is_printable)) return std::nullopt;
  return std::string(text.begin(), text.end());
}

// The number that all of the text is.
template <class Number, class... Form>
std::optional<Number> number_of(std::string_view digits, Form... form) {
  Number number{};
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, form...);
  if (digits.empty() || error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return number;
}

std::optional<PropertyValue> decimal_of(const std::string& text) {
  if (const auto number = number_of<std::int64_t>(text)) return *number;
  const std::string_view digits = std::string_view(text).substr(text.starts_with('-') ? 1 : 0);
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  const std::optional<double> real = number_of<double>(text);
  return real ? std::optional<PropertyValue>(*real) : std::nullopt;
}

// Of the magnitude of a number of 64 bits.
PropertyValue signed_number(std::uint64_t magnitude, bool is_negative) {
  constexpr std::uint64_t lowest = std::uint64_t{1} << 63U;
  if (magnitude < lowest) {
    const auto number = static_cast<std::int64_t>(magnitude);
    return is_negative ? -number : number;
  }
  if (is_negative && magnitude == lowest) return std::numeric_limits<std::int64_t>::min();
  const auto real = static_cast<double>(magnitude);
  return is_negative ? -real : real;
}

// One part of a date: exactly `width` digits at its front, taken away.
std::optional<unsigned> take_digits(std::u16string_view& text, std::size_t width) {
  if (text.size() < width) return std::nullopt;
  unsigned number = 0;
  for (const char16_t c : text.substr(0, width)) {
    if (c < u'0' || c > u'9') return std::nullopt;
    number = number * 10 + (c - u'0');
  }
  text.remove_prefix(width);
  return number;
}

std::optional<Date> date_of_parts(const std::array<unsigned, 6>& parts) {
  const std::chrono::year_month_day day(std::chrono::year(static_cast<int>(parts[0])), std::chrono::month(parts[1]),
                                        std::chrono::day(parts[2]));
  if (!day.ok() || parts[0] == 0 || parts[3] > 23 || parts[4] > 59 || parts[5] > 59) return std::nullopt;
  return std::chrono::sys_days(day) + std::chrono::hours(parts[3]) + std::chrono::minutes(parts[4]) +
         std::chrono::seconds(parts[5]);
}

constexpr Date reference_date = std::chrono::sys_days(std::chrono::year{2001} / 1 / 1);

constexpr std::string_view base64_digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::uint8_t not_a_digit = 0xFF;

constexpr std::array<std::uint8_t, 128> base64_values = [] {
  std::array<std::uint8_t, 128> values{};
  values.fill(not_a_digit);
  for (std::size_t i = 0; i < base64_digits.size(); ++i) {
    values[static_cast<unsigned char>(base64_digits[i])] = static_cast<std::uint8_t>(i);
  }
  return values;
}();

bool is_blank(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

}  // namespace

std::optional<PropertyValue> integer_of_text(std::u16string_view text) {
  const std::optional<std::string> ascii = ascii_of(text);
  if (!ascii) return std::nullopt;
  const bool is_signed = ascii->starts_with('-') || ascii->starts_with('+');
  const std::string_view digits = std::string_view(*ascii).substr(is_signed ? 1 : 0);
  if (digits.starts_with("0x") || digits.starts_with("0X")) {
    const auto magnitude = number_of<std::uint64_t>(digits.substr(2), 16);
    return magnitude ? std::optional(signed_number(*magnitude, ascii->front() == '-')) : std::nullopt;
  }
  if (digits.starts_with('-')) return std::nullopt;
  return decimal_of(ascii->starts_with('+') ? std::string(digits) : *ascii);
}

std::string real_text(double number) {
  if (std::isnan(number)) return "nan";
  std::array<char, 32> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return {buffer.data(), result.ptr};
}

std::optional<double> real_of_text(std::u16string_view text) {
  std::optional<std::string> ascii = ascii_of(text);
  if (!ascii) return std::nullopt;
  if (ascii->starts_with('+') && !ascii->starts_with("+-")) ascii->erase(0, 1);
  return number_of<double>(*ascii);
}

std::string date_text(Date date) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(std::clamp(date, first_date, last_date));
  const auto day = std::chrono::floor<std::chrono::days>(seconds);
  const std::chrono::year_month_day calendar(day);
  const std::chrono::hh_mm_ss time(seconds - day);
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", static_cast<int>(calendar.year()),
                     static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                     time.hours().count(), time.minutes().count(), time.seconds().count());
}

std::optional<Date> date_of_text(std::u16string_view text) {
  constexpr std::u16string_view separators = u"--T::";
  std::array<unsigned, 6> parts = {0, 1, 1, 0, 0, 0};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<unsigned> part = take_digits(text, i == 0 ? 4 : 2);
    if (!part) return std::nullopt;
    parts[i] = *part;
    if (text == u"Z") return date_of_parts(parts);
    if (i == separators.size() || text.empty() || text.front() != separators[i]) return std::nullopt;
    text.remove_prefix(1);
  }
  return std::nullopt;
}

double reference_seconds(Date date) {
  return static_cast<double>((date - reference_date).count()) / 1000.0;
}

std::optional<Date> date_of_reference_seconds(double seconds) {
  const double milliseconds = seconds * 1000.0;
  const auto first = static_cast<double>((first_date - reference_date).count());
  const auto last = static_cast<double>((last_date - reference_date).count());
  if (!(milliseconds >= first && milliseconds <= last)) return std::nullopt;  // nor is it a number
  return reference_date + std::chrono::milliseconds(std::llround(milliseconds));
}

std::optional<PropertyValue::Data> data_of_base64(std::u16string_view text) {
  PropertyValue::Data data;
  data.reserve(text.size() / 4 * 3);
  std::uint32_t bits = 0;
  std::size_t digits = 0;
  std::size_t padding = 0;
  for (const char16_t c : text) {
    if (is_blank(c)) continue;
    padding += c == u'=' ? 1 : 0;
    if (c == u'=') continue;
    const std::uint8_t value = c < base64_values.size() ? base64_values[c] : not_a_digit;
    if (value == not_a_digit || padding > 0) return std::nullopt;
    bits = bits << 6U | value;
    if (++digits % 4 != 1) data.push_back(static_cast<std::uint8_t>(bits >> ((4U - (digits - 1) % 4 - 1) * 2U)));
  }
  if (digits % 4 == 1 || padding > 2) return std::nullopt;
  return data;
}

}  // namespace brindle
