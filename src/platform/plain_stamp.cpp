#include "platform/plain_stamp.h"

#include <unicode/basictz.h>
#include <unicode/tztrans.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace brindle {
namespace {

using std::chrono::milliseconds;

// No clock changes by more, so no local time this far from a change occurs twice or never.
constexpr std::chrono::hours change_limit{26};
constexpr Date first_change{std::chrono::sys_days(std::chrono::year(1800) / 1 / 1)};
constexpr Date last_change{std::chrono::sys_days(std::chrono::year(12000) / 1 / 1)};

std::optional<unsigned> number_at(std::u16string_view text, std::size_t at, std::size_t size) {
  unsigned number = 0;
  for (const char16_t unit : text.substr(at, size)) {
    if (unit < u'0' || unit > u'9') return std::nullopt;
    number = number * 10 + (unit - u'0');
  }
  return number;
}

std::optional<std::chrono::milliseconds> local_time(std::u16string_view text) {
  constexpr std::u16string_view form = u"0000-00-00 00:00:00";
  constexpr std::pair<std::size_t, std::size_t> places[] = {{0, 4}, {5, 2}, {8, 2}, {11, 2}, {14, 2}, {17, 2}};
  if (text.size() != form.size()) return std::nullopt;
  for (std::size_t i = 0; i < form.size(); ++i) {
    if (form[i] != u'0' && text[i] != form[i]) return std::nullopt;
  }
  unsigned parts[6] = {};
  for (std::size_t i = 0; i < 6; ++i) {
    const std::optional<unsigned> number = number_at(text, places[i].first, places[i].second);
    if (!number) return std::nullopt;
    parts[i] = *number;
  }
  const auto [year, month, day, hour, minute, second] = parts;
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                                         std::chrono::day(day)};
  if (year < 1900 || !date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return std::chrono::sys_days(date).time_since_epoch() + std::chrono::hours(hour) + std::chrono::minutes(minute) +
         std::chrono::seconds(second);
}

Date moment_of(UDate moment) {
  const auto date = Date(milliseconds(static_cast<std::int64_t>(moment)));
  return std::clamp(date, first_change, last_change);
}

}  // namespace

void PlainStampReader::find_span(Date moment) {
  span_start_ = span_end_ = moment;
  const auto* const zone = dynamic_cast<const icu::BasicTimeZone*>(zone_.get());
  if (zone == nullptr) return;
  const auto base = static_cast<UDate>(moment.time_since_epoch().count());
  std::int32_t standard = 0;
  std::int32_t daylight = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone->getOffset(base, false, standard, daylight, status);
  if (U_FAILURE(status)) return;
  offset_ = milliseconds(standard + daylight);
  icu::TimeZoneTransition change;
  span_start_ = zone->getPreviousTransition(base, true, change) ? moment_of(change.getTime()) : first_change;
  span_end_ = zone->getNextTransition(base, false, change) ? moment_of(change.getTime()) : last_change;
}

bool PlainStampReader::is_inside_span(Date moment) const {
  return moment >= span_start_ + change_limit && moment < span_end_ - change_limit;
}

std::optional<Date> PlainStampReader::read(std::u16string_view text) {
  const std::optional<milliseconds> local = local_time(text);
  if (!local) return std::nullopt;
  if (!is_inside_span(Date(*local - offset_))) find_span(Date(*local - offset_));
  const Date moment(*local - offset_);
  return is_inside_span(moment) ? std::optional(moment) : std::nullopt;
}

}  // namespace brindle
