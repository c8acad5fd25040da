#pragma once

// What may be typed into the window's fields. Pure; any thread. Texts are UTF-16, lengths in its units.

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle {

/// The filter of short fields.
class CustomTextFieldFormatter {
 public:
  struct Answer {
    bool accepted = false;
    bool beep = false;
  };

  static constexpr std::int32_t maximumLength() { return 3; }

  /// Whether a field may come to hold `text`. More than three units are refused without a sound. Any other text must be
  /// the decimal form of an integer from 0 to 300 and nothing else ("007", "+7", "-7" and "7 " are refused, with a
  /// beep); an empty one is accepted with a beep.
  Answer check(std::u16string_view text) const;
};

/// What a numeric field (BRNumericTextField) holds after `text` was typed: its integer value, or `tag`, the field's
/// fallback, when that is 0 (empty, or no number).
std::u16string numeric_field_text(std::u16string_view text, std::int32_t tag);

}  // namespace brindle
