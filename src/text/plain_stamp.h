#pragma once

// The one form in which cameras write dates, read in a hundredth of the time that the general parser takes.

#include <optional>
#include <string_view>

#include "platform/date.h"

namespace brindle {

inline constexpr std::u16string_view plain_stamp_pattern = u"yyyy-MM-dd HH:mm:ss";

/// "2009-05-17 10:20:30". None for texts of any other form, which the general parser may know. Pure; any thread.
std::optional<WallTime> read_plain_stamp(std::u16string_view text);

}  // namespace brindle
