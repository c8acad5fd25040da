#pragma once

// Names from the disk, made safe to show on a terminal.

#include <string>
#include <string_view>

namespace brindle {

/// `bytes` with everything that could drive the terminal or break a line shown as an escape: control characters as \n, \t or
/// \x1b, bytes that are not valid UTF-8 as \xff, direction marks and other invisible controls as \u{202e}, and "\" as "\\".
std::string escape_for_terminal(std::string_view bytes);

}  // namespace brindle
