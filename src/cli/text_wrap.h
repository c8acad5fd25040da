#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle {

/// Appends the text in lines of at most `width` columns, broken at blanks, and ends the last. Further lines begin at
/// column `indent`, where the first one stands already. A word that is longer than a line is not broken.
void append_wrapped(std::string_view text, std::size_t indent, std::size_t width, std::string& out);

}  // namespace brindle
