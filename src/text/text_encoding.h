#pragma once

// Texts inside other people's files, in whatever character set they were written. Hardly anything is an error:
// what makes no sense becomes U+FFFD. Pure; any thread.

#include <optional>
#include <string>
#include <string_view>

namespace brindle {

/// UTF-8 where the bytes are valid UTF-8, else Windows Latin 1 (ISO 8859-1 with typographic characters where it has
/// control codes): what is found where nothing says the character set.
std::u16string decode_text(std::string_view bytes);

std::u16string decode_latin1(std::string_view bytes);  ///< Windows Latin 1, always
std::u16string decode_utf8(std::string_view bytes);    ///< UTF-8, always

/// UTF-8; none when the bytes are not valid.
std::optional<std::u16string> decode_valid_utf8(std::string_view bytes);

/// Units of two bytes. A byte order mark decides; then, in texts that are mostly ASCII, the place of the zero bytes;
/// then `big_endian`. An odd last byte is dropped.
std::u16string decode_utf16(std::string_view bytes, bool big_endian);

/// Seven-bit Japanese (ISO 2022-JP).
std::u16string decode_japanese(std::string_view bytes);

/// `text` without white space and line ends at both ends.
std::u16string_view trimmed(std::u16string_view text);

}  // namespace brindle
