#include "text/date_format.h"

#include <unicode/dtfmtsym.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/simpletz.h>
#include <unicode/smpdtfmt.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "platform/translation.h"
#include "text/plain_date.h"

namespace brindle {
namespace {

// What setlocale would choose for dates, without asking a program to call it.
icu::Locale date_locale() {
  const char* name = nullptr;
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    name = std::getenv(variable);
    if (name != nullptr && *name != '\0') break;
  }
  icu::Locale locale = icu::Locale::createCanonical(name == nullptr || *name == '\0' ? "C" : name);
  UErrorCode status = U_ZERO_ERROR;
  locale.setKeywordValue("calendar", "gregorian", status);
  locale.setKeywordValue("numbers", "latn", status);
  return locale;
}

icu::UnicodeString view_of(std::u16string_view text) {
  return {false, text.data(), static_cast<std::int32_t>(text.size())};
}

std::unique_ptr<icu::SimpleDateFormat> make_format(std::u16string_view pattern) {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(view_of(pattern)), date_locale(), status);
  return U_FAILURE(status) ? nullptr : std::move(format);
}

std::u16string text_of(const icu::UnicodeString& text) {
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

NumericDatePattern::DayHalves day_halves(const icu::SimpleDateFormat& format) {
  std::int32_t count = 0;
  const icu::UnicodeString* const words = format.getDateFormatSymbols()->getAmPmStrings(count);
  return count < 2 ? NumericDatePattern::DayHalves{}
                   : NumericDatePattern::DayHalves{text_of(words[0]), text_of(words[1])};
}

std::int64_t count_of(WallTime time) {
  return time.time_since_epoch().count();
}

/// How far the clocks of a zone are ahead of UTC when they show that time, in milliseconds.
std::int32_t offset_at(const icu::TimeZone& zone, WallTime time) {
  std::int32_t standard = 0;
  std::int32_t daylight = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone.getOffset(static_cast<UDate>(count_of(time)), true, standard, daylight, status);
  return standard + daylight;
}

// Field by field, in a zone without changes, so that every time exists.
void set_calendar(icu::Calendar& calendar, WallTime time) {
  icu::UnicodeString name;
  const icu::TimeZone& zone = calendar.getTimeZone();
  calendar.adoptTimeZone(new icu::SimpleTimeZone(offset_at(zone, time), zone.getID(name)));
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  calendar.clear();
  calendar.set(int{date.year()}, static_cast<int>(unsigned{date.month()}) - 1, static_cast<int>(unsigned{date.day()}),
               static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
               static_cast<int>(clock.seconds().count()));
  calendar.set(UCAL_MILLISECOND, static_cast<int>(clock.subseconds().count()));
}

// Outside these dates calendars and offsets have stories of their own, which the general formatter knows.
constexpr Date first_plain_date = std::chrono::sys_days(std::chrono::year(1900) / 1 / 2);
constexpr Date last_plain_date = std::chrono::sys_days(std::chrono::year(9999) / 12 / 30);

// Beyond them a year has other than four digits.
constexpr WallTime first_plain_time = std::chrono::local_days(std::chrono::year(1) / 1 / 1);
constexpr WallTime end_of_plain_times = std::chrono::local_days(std::chrono::year(10'000) / 1 / 1);

}  // namespace

class DateFormatter::Pattern {
 public:
  explicit Pattern(std::u16string_view pattern) : format_(make_format(pattern)) {
    if (format_) numeric_ = NumericDatePattern::compile(pattern, day_halves(*format_));
  }

  void append(WallTime time, std::u16string& out) const {
    if (numeric_ && time >= first_plain_time && time < end_of_plain_times)
      return numeric_->append(std::chrono::floor<std::chrono::seconds>(time), out);
    const auto calendar = format_ ? std::unique_ptr<icu::Calendar>(format_->getCalendar()->clone()) : nullptr;
    if (calendar) set_calendar(*calendar, time);
    write(out,
          [&](icu::UnicodeString& text, UErrorCode& status) { format_->format(*calendar, text, nullptr, status); });
  }

  void append(Date date, std::u16string& out) const {
    if (numeric_ && date >= first_plain_date && date <= last_plain_date) {
      numeric_->append(local(date), out);
    } else {
      append_generally(date, out);
    }
  }

 private:
  std::chrono::local_seconds local(Date date) const {
    std::int32_t zone = 0;
    std::int32_t daylight = 0;
    UErrorCode status = U_ZERO_ERROR;
    format_->getTimeZone().getOffset(static_cast<UDate>(date.time_since_epoch().count()), false, zone, daylight,
                                     status);
    const Date there = date + std::chrono::milliseconds(zone + daylight);
    return std::chrono::local_seconds(std::chrono::floor<std::chrono::seconds>(there).time_since_epoch());
  }

  void append_generally(Date date, std::u16string& out) const {
    write(out, [&](icu::UnicodeString& text, UErrorCode& status) {
      format_->format(static_cast<UDate>(date.time_since_epoch().count()), text, nullptr, status);
    });
  }

  template <class Format>
  void write(std::u16string& out, Format format) const {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    if (format_) format(text, status);
    if (!format_ || U_FAILURE(status))
      throw std::runtime_error(std::string(to_translate("the date pattern holds a letter that stands for no field")));
    out.append(text.getBuffer(), static_cast<std::size_t>(text.length()));
  }

  std::unique_ptr<icu::SimpleDateFormat> format_;
  std::optional<NumericDatePattern> numeric_;
};

DateFormatter::DateFormatter(std::u16string_view pattern) : pattern_(std::make_shared<const Pattern>(pattern)) {}

void DateFormatter::append(Date date, std::u16string& out) const {
  pattern_->append(date, out);
}

void DateFormatter::append(WallTime time, std::u16string& out) const {
  pattern_->append(time, out);
}

std::u16string DateFormatter::format(Date date) const {
  std::u16string text;
  append(date, text);
  return text;
}

std::u16string DateFormatter::format(WallTime time) const {
  std::u16string text;
  append(time, text);
  return text;
}

namespace {

const DateFormatter& last_formatter(std::u16string_view pattern) {
  struct Last {
    std::u16string pattern;
    DateFormatter formatter;
  };
  thread_local std::optional<Last> last;
  if (!last || last->pattern != pattern) last.emplace(Last{std::u16string(pattern), DateFormatter(pattern)});
  return last->formatter;
}

/// Reads whole texts by a pattern, strictly: no 31st of April.
class Parser {
 public:
  explicit Parser(std::u16string_view pattern) : pattern_(pattern), format_(make_format(pattern)) {
    if (format_) format_->setLenient(false);
  }

  const std::u16string& pattern() const { return pattern_; }

  /// From now on in UTC, where every time exists, and with one calendar for all years.
  void read_wall_times() {
    UErrorCode status = U_ZERO_ERROR;
    auto calendar = std::make_unique<icu::GregorianCalendar>(*icu::TimeZone::getGMT(), date_locale(), status);
    if (!format_ || U_FAILURE(status)) return format_.reset();
    calendar->setGregorianChange(-8.64e15, status);
    calendar->setLenient(false);
    format_->adoptCalendar(calendar.release());
  }

  std::optional<std::chrono::milliseconds> read(std::u16string_view text) const {
    if (!format_ || text.empty()) return std::nullopt;
    icu::ParsePosition position(0);
    const UDate date = format_->parse(icu::UnicodeString(view_of(text)), position);
    if (position.getIndex() != static_cast<std::int32_t>(text.size())) return std::nullopt;
    return std::chrono::milliseconds(static_cast<std::int64_t>(date));
  }

 private:
  std::u16string pattern_;
  std::unique_ptr<icu::SimpleDateFormat> format_;
};

// Whether a pattern has a field for the zone.
bool names_zone(std::u16string_view pattern) {
  bool is_quoted = false;
  for (const char16_t unit : pattern) {
    if (unit == u'\'') is_quoted = !is_quoted;
    if (!is_quoted && std::u16string_view(u"zZOvVXx").find(unit) != std::u16string_view::npos) return true;
  }
  return false;
}

}  // namespace

std::u16string format_date(Date date, std::u16string_view pattern) {
  return last_formatter(pattern).format(date);
}

std::u16string format_date(WallTime time, std::u16string_view pattern) {
  return last_formatter(pattern).format(time);
}

std::optional<WallTime> parse_wall_time(std::u16string_view text, std::u16string_view pattern) {
  if (pattern == plain_stamp_pattern) {
    if (const std::optional<WallTime> time = read_plain_stamp(text)) return time;
  }
  thread_local std::optional<Parser> last;
  if (!last || last->pattern() != pattern) last.emplace(pattern).read_wall_times();
  const std::optional<std::chrono::milliseconds> time = last->read(text);
  return time ? std::optional(WallTime(*time)) : std::nullopt;
}

std::optional<Date> parse_date(std::u16string_view text, std::u16string_view pattern) {
  thread_local std::optional<Parser> last;
  if (names_zone(pattern)) {
    if (!last || last->pattern() != pattern) last.emplace(pattern);
    const std::optional<std::chrono::milliseconds> moment = last->read(text);
    return moment ? std::optional(Date(*moment)) : std::nullopt;
  }
  const std::optional<WallTime> time = parse_wall_time(text, pattern);
  if (!time) return std::nullopt;
  const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
  return Date(time->time_since_epoch() - std::chrono::milliseconds(offset_at(*zone, *time)));
}

}  // namespace brindle
