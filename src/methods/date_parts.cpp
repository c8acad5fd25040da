#include "methods/date_parts.h"

#include <initializer_list>

#include "text/string_utilities.h"

namespace brindle {
namespace {

std::u16string joined(std::initializer_list<std::u16string_view> pieces, std::u16string_view fallback) {
  std::u16string pattern;
  for (const std::u16string_view piece : pieces) pattern.append(piece);
  return pattern.empty() ? std::u16string(fallback) : pattern;
}

std::u16string_view part(std::u16string_view choice) {
  return choice == u"None" ? std::u16string_view() : choice;
}

}  // namespace

DateParts date_parts(const RenameSettings& settings, const DatePartMembers& members) {
  const auto date = [&](std::size_t at) { return text_of(settings.*members.date[at]); };
  const auto time = [&](std::size_t at) { return text_of(settings.*members.time[at]); };
  return {date(0), date(1), date(2), date(3), date(4), time(0), time(1), time(2), time(3), time(4)};
}

std::u16string pattern_on_disk(std::u16string (*pattern)(const DateParts&), const DateParts& parts) {
  const std::array<std::u16string, 4> separators = {on_disk(parts.dateSeperator1), on_disk(parts.dateSeperator2),
                                                    on_disk(parts.timeSeperator1), on_disk(parts.timeSeperator2)};
  DateParts ready = parts;
  ready.dateSeperator1 = separators[0];
  ready.dateSeperator2 = separators[1];
  ready.timeSeperator1 = separators[2];
  ready.timeSeperator2 = separators[3];
  return pattern(ready);
}

std::u16string date_pattern(const DateParts& parts) {
  return joined(
      {part(parts.datePart1), parts.dateSeperator1, part(parts.datePart2), parts.dateSeperator2, part(parts.datePart3)},
      u"MM/dd/yyyy");
}

std::u16string time_pattern(const DateParts& parts) {
  return joined(
      {part(parts.timePart1), parts.timeSeperator1, part(parts.timePart2), parts.timeSeperator2, part(parts.timePart3)},
      u"hh mm ss a");
}

}  // namespace brindle
