#pragma once

// How much room a text takes on a terminal. Pure; any thread.

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

}  // namespace brindle
