#include "text/date_pattern.h"

#include <initializer_list>

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
