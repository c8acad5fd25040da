#pragma once

// Numbers, dates and data as property lists write them. Reading expects texts without white space around them and
// returns none for what is no such value. Pure; any thread.

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "plist/property_value.h"

namespace brindle {

/// Decimal, or hexadecimal after "0x"; with or without a sign. A number beyond 64 bits with sign reads as a real.
std::optional<PropertyValue> integer_of_text(std::u16string_view text);

/// The shortest text that reads back as the same number; "nan", "inf", "-inf".
std::string real_text(double number);
/// Also takes "infinity", and capitals.
std::optional<double> real_of_text(std::u16string_view text);

/// The first and the last moment that a property list's date can name: the years 1 to 9999.
inline constexpr Date first_date = std::chrono::sys_days(std::chrono::year{1} / 1 / 1);
inline constexpr Date last_date =
    std::chrono::sys_days(std::chrono::year{10000} / 1 / 1) - std::chrono::milliseconds(1);

/// "2026-11-21T10:00:00Z": the second in which the moment lies. Moments out of range are written as the nearest.
std::string date_text(Date date);
/// In UTC; smaller units may be left out, as in "2026-11Z".
std::optional<Date> date_of_text(std::u16string_view text);

// The binary form of dates: seconds since 2001-01-01 (UTC).

double reference_seconds(Date date);
/// To the nearest millisecond; none out of range.
std::optional<Date> date_of_reference_seconds(double seconds);

/// The bytes of base64. White space anywhere is passed over, and the padding may be missing.
std::optional<PropertyValue::Data> data_of_base64(std::u16string_view text);

}  // namespace brindle
