#pragma once

// Text on a terminal: how wide it is, wrapped, and made harmless. Pure; any thread.

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle {

/// Columns of a UTF-8 text without control characters: wide characters and emoji take two, combining marks none.
std::size_t display_width(std::string_view text);

/// The text when it fits into `columns`; else its end, behind "…".
std::string fit_end(std::string_view text, std::size_t columns);

/// Whether the text holds characters that are read from right to left.
bool has_right_to_left(std::string_view text);

/// `position` moved back, when it is inside what is drawn as one character (UTF-8 bytes, marks, joined emoji), to its
/// start.
std::size_t character_start(std::string_view text, std::size_t position);

/// Appends the text in lines of at most `width` columns, broken at blanks, and ends the last. Further lines begin at
/// column `indent`, where the first one stands already. A word that is longer than a line is not broken.
void append_wrapped(std::string_view text, std::size_t indent, std::size_t width, std::string& out);

/// `bytes` with everything that could drive the terminal or break a line shown as an escape: control characters as \n,
/// \t or \x1b, bytes that are not valid UTF-8 as \xff, direction marks and other invisible controls as \u{202e}, and
/// "\" as "\\".
std::string escape_for_terminal(std::string_view bytes);

/// The same, appended. Names of printable ASCII, which are most names, cost a copy.
void append_escaped_for_terminal(std::string_view bytes, std::string& text);

/// For a pipe: the bytes as they are, but for line ends, which become \n and \r, so that a line stays a line.
void append_on_one_line(std::string_view bytes, std::string& text);

}  // namespace brindle
