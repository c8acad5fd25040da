#pragma once

// Dates as people and programs exchange them. Pure, but for the zone of this computer; any thread.

#include <optional>
#include <string>
#include <string_view>

#include "platform/date.h"

namespace brindle {

/// The moment an ISO 8601 text names: a date, a date and a time to the minute, second or millisecond (joined by "T" or
/// a blank), with "Z" or an offset, or else in the zone of this computer. None for any other text.
std::optional<Date> date_of_iso_text(std::string_view bytes);

/// "2026-11-21T10:00:00Z", with milliseconds when there are any.
std::string iso_text(Date date);

}  // namespace brindle
