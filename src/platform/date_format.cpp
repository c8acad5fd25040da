#include "platform/date_format.h"

#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>

#include <cstdlib>
#include <stdexcept>

#include "platform/numeric_date_pattern.h"
#include "platform/plain_stamp.h"

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

// Outside these dates calendars and offsets have stories of their own, which the general formatter knows.
constexpr Date first_plain_date = std::chrono::sys_days(std::chrono::year(1900) / 1 / 2);
constexpr Date last_plain_date = std::chrono::sys_days(std::chrono::year(9999) / 12 / 30);

}  // namespace

class DateFormatter::Pattern {
 public:
  explicit Pattern(std::u16string_view pattern) : format_(make_format(pattern)) {
    if (format_) numeric_ = NumericDatePattern::compile(pattern, day_halves(*format_));
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
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    if (format_) format_->format(static_cast<UDate>(date.time_since_epoch().count()), text, nullptr, status);
    if (!format_ || U_FAILURE(status))
      throw std::runtime_error("the date pattern holds a letter that stands for no field");
    out.append(text.getBuffer(), static_cast<std::size_t>(text.length()));
  }

  std::unique_ptr<icu::SimpleDateFormat> format_;
  std::optional<NumericDatePattern> numeric_;
};

DateFormatter::DateFormatter(std::u16string_view pattern) : pattern_(std::make_shared<const Pattern>(pattern)) {}

void DateFormatter::append(Date date, std::u16string& out) const {
  pattern_->append(date, out);
}

std::u16string DateFormatter::format(Date date) const {
  std::u16string text;
  append(date, text);
  return text;
}

std::u16string format_date(Date date, std::u16string_view pattern) {
  struct Last {
    std::u16string pattern;
    DateFormatter formatter;
  };
  thread_local std::optional<Last> last;
  if (!last || last->pattern != pattern) last.emplace(Last{std::u16string(pattern), DateFormatter(pattern)});
  return last->formatter.format(date);
}

std::optional<Date> parse_date(std::u16string_view text, std::u16string_view pattern) {
  struct Last {
    std::u16string pattern;
    std::unique_ptr<icu::SimpleDateFormat> format;
    std::optional<PlainStampReader> stamps;
  };
  thread_local Last last;
  if (!last.format || last.pattern != pattern) {
    last = {std::u16string(pattern), make_format(pattern), std::nullopt};
    if (!last.format) return std::nullopt;
    last.format->setLenient(false);
    if (pattern == PlainStampReader::pattern) last.stamps.emplace(last.format->getTimeZone());
  }
  if (last.stamps) {
    if (const std::optional<Date> date = last.stamps->read(text)) return date;
  }
  icu::ParsePosition position(0);
  const UDate date = last.format->parse(icu::UnicodeString(view_of(text)), position);
  if (position.getIndex() != static_cast<std::int32_t>(text.size()) || text.empty()) return std::nullopt;
  return Date(std::chrono::milliseconds(static_cast<std::int64_t>(date)));
}

}  // namespace brindle
