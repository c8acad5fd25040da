#include "text/plain_stamp.h"

#include <cstddef>
#include <utility>

namespace brindle {
namespace {

std::optional<unsigned> number_at(std::u16string_view text, std::size_t at, std::size_t size) {
  unsigned number = 0;
  for (const char16_t unit : text.substr(at, size)) {
    if (unit < u'0' || unit > u'9') return std::nullopt;
    number = number * 10 + (unit - u'0');
  }
  return number;
}

}  // namespace

std::optional<WallTime> read_plain_stamp(std::u16string_view text) {
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
  if (year < 1 || !date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return std::chrono::local_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
         std::chrono::seconds(second);
}

}  // namespace brindle
