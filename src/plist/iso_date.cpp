#include "plist/iso_date.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "text/date_format.h"

namespace brindle {
namespace {

constexpr std::array<std::u16string_view, 4> times = {u"", u"'T'HH:mm", u"'T'HH:mm:ss", u"'T'HH:mm:ss.SSS"};
constexpr std::array<std::u16string_view, 3> zones = {u"", u"X", u"XXX"};

// The formatter takes "26-1-1" for a date too.
bool begins_with_date(std::u16string_view text) {
  constexpr std::u16string_view shape = u"0000-00-00";
  return text.size() >= shape.size() &&
         std::ranges::equal(text.substr(0, shape.size()), shape,
                            [](char16_t c, char16_t s) { return s == u'-' ? c == s : c >= u'0' && c <= u'9'; });
}

}  // namespace

std::optional<Date> date_of_iso_text(std::string_view bytes) {
  std::u16string text(bytes.begin(), bytes.end());
  if (!begins_with_date(text)) return std::nullopt;
  if (text.size() > 10 && text[10] == u' ') text[10] = u'T';
  for (const std::u16string_view time : times) {
    for (const std::u16string_view zone : zones) {
      if (time.empty() && !zone.empty()) continue;
      if (const auto date = parse_date(text, std::u16string(u"yyyy-MM-dd").append(time).append(zone))) return date;
    }
  }
  return std::nullopt;
}

std::string iso_text(Date date) {
  const auto day = std::chrono::floor<std::chrono::days>(date);
  const std::chrono::year_month_day calendar(day);
  const std::chrono::hh_mm_ss time(date - day);
  std::string text = fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", static_cast<int>(calendar.year()),
                                 static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                                 time.hours().count(), time.minutes().count(), time.seconds().count());
  if (time.subseconds().count() != 0) text += fmt::format(".{:03}", time.subseconds().count());
  return text + "Z";
}

}  // namespace brindle
