#pragma once

// Numbers as text: with digits, and counting with letters: a, b, … z, aa, ab, … A letter counter is a text of the
// letters a to z; every operation also takes any other text. Pure; any thread.

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle {

/// The number a text stands for: leading blanks (space, tab, line ends) are skipped, then an optional sign and decimal
/// digits are read; what follows does not matter. Saturates at the limits of 32 bits. 0 where no digit is found.
std::int32_t integer_value(std::u16string_view text);

/// The decimal form: digits, with "-" before them where the number is below 0.
std::u16string decimal_text(std::int64_t number);

/// Whether every unit lies between "a" and "z"; true for the empty text.
bool isAlphabeticNumericInRange(std::u16string_view text);

/// The counter stepped up once. A last letter that runs past "z" becomes the `incrementBy`-th letter, whatever it was,
/// so "y" stepped by 3 is "ac".
std::u16string nextAlphabeticNumber(std::u16string_view text, std::int32_t incrementBy);

/// The counter stepped down once. A last letter that falls below "a" becomes the `decrementBy`-th letter from the end;
/// a leading letter that falls below "a" vanishes, so "a" stepped by 1 is empty.
std::u16string previousAlphabeticNumber(std::u16string_view text, std::int32_t decrementBy);

/// `counter` stepped up, and on until it is in range. `step` is 1…26. The time depends on the length alone, however
/// many steps that takes.
void step_up_into_range(std::u16string& counter, std::int32_t step);

/// The same downwards. An empty counter that comes up on the way stands for the letter before "a", which is "z" again.
void step_down_into_range(std::u16string& counter, std::int32_t step);

}  // namespace brindle
