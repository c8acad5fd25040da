#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brindle {

/// The number a text stands for: leading blanks (space, tab, line ends) are skipped, then an optional sign and decimal
/// digits are read; what follows does not matter. Saturates at the limits of 32 bits. 0 where no digit is found.
std::int32_t integer_value(std::u16string_view text);

/// The decimal form: digits, with "-" before them where the number is below 0.
std::u16string decimal_text(std::int64_t number);

}  // namespace brindle
