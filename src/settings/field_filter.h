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

  std::int32_t maximumLength() const { return maxLength_; }
  void setMaximumLength(std::int32_t length) { maxLength_ = length; }
  bool numberValidate() const { return numberValidate_; }
  void setNumberValidate(bool validate) { numberValidate_ = validate; }

  /// Whether a field may come to hold `text`. Too long a text is refused without a sound. With numberValidate a text
  /// that is not empty must be the decimal form of an integer of at most 300 and nothing else ("007", "+7", "-7" and "7
  /// " are refused, with a beep); an empty one is accepted with a beep.
  Answer check(std::u16string_view text) const;

 private:
  std::int32_t maxLength_ = 3;
  bool numberValidate_ = true;
};

/// What a numeric field (BRNumericTextField) holds after `text` was typed: its integer value, or `tag`, the field's
/// fallback, when that is 0 (empty, or no number).
std::u16string numeric_field_text(std::u16string_view text, std::int32_t tag);

}  // namespace brindle
