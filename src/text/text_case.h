#pragma once

// Letter case of whole texts by the full Unicode mappings, the same in every language ("ß" becomes "SS", a final sigma
// is told from others). Each appends to `out`, which must not be the text it reads. Pure; any thread.

#include <string>
#include <string_view>

namespace brindle {

void append_upper_case(std::u16string_view text, std::u16string& out);
void append_lower_case(std::u16string_view text, std::u16string& out);

/// The first character of every word in upper case, all others in lower case. Words are what stands between spaces,
/// tabs and line ends, so "don't" has one first character.
void append_proper_case(std::u16string_view text, std::u16string& out);

}  // namespace brindle
