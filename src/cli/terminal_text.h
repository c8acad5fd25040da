#pragma once

// Names from the disk, made safe to show. Pure; any thread.

#include <string>
#include <string_view>

namespace brindle {

/// `bytes` with everything that could drive the terminal or break a line shown as an escape: control characters as \n,
/// \t or \x1b, bytes that are not valid UTF-8 as \xff, direction marks and other invisible controls as \u{202e}, and
/// "\" as "\\".
std::string escape_for_terminal(std::string_view bytes);

/// The same, appended. Names of printable ASCII, which are most names, cost a copy.
void append_escaped_for_terminal(std::string_view bytes, std::string& text);

/// For a pipe: the bytes as they are, but for line ends, which become \n and \r, so that a line stays a line.
void append_on_one_line(std::string_view bytes, std::string& text);

}  // namespace brindle
