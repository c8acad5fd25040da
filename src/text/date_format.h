#pragma once

// Dates as text and back, by Unicode date patterns ("yyyy-MM-dd HH:mm"; letters are fields, quoted text is literal), in
// the zone of this computer and the language its user reads dates in (LC_ALL, LC_TIME, LANG), always with the Gregorian
// calendar and the digits 0 to 9. What a clock shows is written and read as it is, and never becomes a moment on the
// way.

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/date.h"

namespace brindle {

/// A pattern made ready, with the zone and the language as they were at that time. Making one costs tens of
/// microseconds. Copies share what was made. Immutable; any number of threads may use one.
class DateFormatter {
 public:
  explicit DateFormatter(std::u16string_view pattern);

  /// Appends the date. Throws std::runtime_error when the pattern cannot be used: a letter that is no field.
  void append(Date date, std::u16string& out) const;
  std::u16string format(Date date) const;
  /// The same. A zone in the pattern is that of this computer.
  void append(WallTime time, std::u16string& out) const;
  std::u16string format(WallTime time) const;

 private:
  class Pattern;
  std::shared_ptr<const Pattern> pattern_;
};

/// One date, once. The formatter of the thread's last call is kept for the next call with the same pattern.
std::u16string format_date(Date date, std::u16string_view pattern);
std::u16string format_date(WallTime time, std::u16string_view pattern);

/// What the whole text spells by the pattern, none for any other text. Fields the pattern lacks are those of 1970.
std::optional<WallTime> parse_wall_time(std::u16string_view text, std::u16string_view pattern);

/// The moment that the whole text spells by the pattern. A text without a zone is read in the zone of this computer;
/// what its clocks skip is a moment near it.
std::optional<Date> parse_date(std::u16string_view text, std::u16string_view pattern);

}  // namespace brindle
