#pragma once

#include <optional>

#include "plist/property_value.h"

namespace brindle {

/// A flag as preferences hold it: a boolean, a number (0 or not), or a text, which is true when, behind blanks, a sign
/// and zeros, it begins with a digit, "y" or "t" in either case. None for any other kind of value. Pure; any thread.
std::optional<bool> flag_value(const PropertyValue& value);

}  // namespace brindle
