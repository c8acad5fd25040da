#pragma once

// How one setting stands in a settings record and in a rule: flags and numbers as decimal text, texts and the date as
// they are. Lists are not dealt with here, since the two store them differently (list_values.h). Pure; any thread.

#include <optional>
#include <string>
#include <string_view>

#include "plist/property_value.h"
#include "settings/rename_settings.h"

namespace brindle {

/// A key of the settings table, which is ASCII, as property lists have it.
inline std::u16string key_text(std::string_view key) {
  return {key.begin(), key.end()};
}

PropertyValue stored(bool flag);
PropertyValue stored(std::int32_t number);

/// The text that a value of a scalar kind stands for: itself, a number in decimal ("5", also of a real without a
/// fraction), a flag as "1" or "0". None for dates, data, lists, and what is not a finite number.
std::optional<std::u16string> scalar_text(const PropertyValue& value);

// Taking a value back: false, with the member untouched, when the value is of a kind that the member cannot hold.

/// Flags and numbers come from a text's integer value (0 where it is none), and from a property list's own flags and
/// numbers, saturating at 32 bits. Texts come from every scalar: other programs write the numbers that people type in
/// as numbers.
bool restore(bool& flag, const PropertyValue& value);
bool restore(std::int32_t& number, const PropertyValue& value);
bool restore(Text& text, const PropertyValue& value);
bool restore(Date& date, const PropertyValue& value);

}  // namespace brindle
