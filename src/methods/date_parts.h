#pragma once

// Date patterns as a person puts them together from pop-ups: three parts of a date and three of a time with separators
// between them, ten settings of every method that writes dates into names. Pure; any thread.

#include <array>
#include <string>
#include <string_view>

#include "settings/rename_settings.h"

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

/// Part, separator, part, separator, part of a date, and of a time. A method writes them down once; its step, rules,
/// words on the command line and panel all go by that.
struct DatePartMembers {
  std::array<Text RenameSettings::*, 5> date;
  std::array<Text RenameSettings::*, 5> time;
};

/// Views into the settings.
DateParts date_parts(const RenameSettings& settings, const DatePartMembers& members);

/// The pattern of the date or of the time (date_pattern, time_pattern), "/" of the separators turned to ":".
std::u16string pattern_on_disk(std::u16string (*pattern)(const DateParts&), const DateParts& parts);

}  // namespace brindle
