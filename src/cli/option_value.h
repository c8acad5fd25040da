#pragma once

// Values of options and operands, read by kind.

#include <string_view>
#include <vector>

#include "cli/method_words.h"

namespace brindle {

/// "a|b|c" as "a", "b", "c".
std::vector<std::string_view> split_choices(std::string_view choices);

/// Reads a value. `name` is the option or operand, `form` how help calls the value (the words of a choice). Throws
/// UsageError when the text is none of that kind.
OptionValue read_value(ValueKind kind, std::string_view name, std::string_view form, std::string_view text);

}  // namespace brindle
