#pragma once

// The ten settings from which a method writes dates and times.

#include <array>
#include <string>

#include "settings/rename_settings.h"
#include "text/date_pattern.h"

namespace brindle {

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
