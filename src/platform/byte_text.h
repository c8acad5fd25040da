#pragma once

// Any bytes as ASCII text: percent coding and base64. Pure; any thread.

#include <string>
#include <string_view>

namespace brindle {

/// Appends bytes with all but unreserved characters (and "/") as %XX.
void append_percent_encoded(std::string_view bytes, std::string& text);

/// The way back. False when a "%" is not followed by two hexadecimal digits.
bool percent_decode(std::string_view text, std::string& bytes);

/// Appends base64 with its padding and without line breaks.
void append_base64(std::string_view bytes, std::string& text);

}  // namespace brindle
