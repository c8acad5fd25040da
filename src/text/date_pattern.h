#pragma once

// Date patterns as a person puts them together from pop-ups: three parts of a date and three of a time with separators
// between them. Used by every method that writes dates into names. Pure; any thread.

#include <string>
#include <string_view>

namespace brindle {

/// A part is a field of a Unicode date pattern ("yyyy", "MM", "HH"), or "None" for no part here.
struct DateParts {
  std::u16string_view datePart1 = u"None";
  std::u16string_view dateSeperator1 = {};
  std::u16string_view datePart2 = u"None";
  std::u16string_view dateSeperator2 = {};
  std::u16string_view datePart3 = u"None";
  std::u16string_view timePart1 = u"None";
  std::u16string_view timeSeperator1 = {};
  std::u16string_view timePart2 = u"None";
  std::u16string_view timeSeperator2 = {};
  std::u16string_view timePart3 = u"None";
};

/// Parts and separators in order; a separator stays when the part next to it is "None". "MM/dd/yyyy" when that is
/// nothing.
std::u16string date_pattern(const DateParts& parts);

/// The same for the time; "hh mm ss a" when that is nothing.
std::u16string time_pattern(const DateParts& parts);

}  // namespace brindle
