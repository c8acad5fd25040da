#pragma once

// The lossless road between names on disk (bytes) and names in the program (UTF-16).
//
// Valid UTF-8 becomes the text it stands for. A byte b (0x80…0xFF) that is not part of valid UTF-8 becomes the code
// unit U+EF00 + b (U+EF80…U+EFFF), and a valid sequence that itself stands for one of those code points is mapped byte
// by byte too. So every byte string comes back exactly: encode(decode(bytes)) == bytes.
//
// All functions are pure and may be called from any thread.

#include <cstddef>
#include <string>
#include <string_view>

namespace brindle {

/// Appends the text of a name or a path to `text`.
void append_decoded(std::string_view bytes, std::u16string& text);

/// The text of a name or a path.
std::u16string decode_file_name(std::string_view bytes);

/// How many bytes from the start on are valid UTF-8 (the raw-byte code points count as valid).
std::size_t valid_utf8_prefix(std::string_view bytes);

/// Why a text cannot be the name of a file.
enum class NameFault {
  none,
  empty,
  dot,                 ///< "." or ".."
  nul,                 ///< holds U+0000
  separator,           ///< holds "/"
  unpaired_surrogate,  ///< a character outside the basic plane was split
  too_long,            ///< longer than the folder's disk allows
};

/// Replaces `bytes` by the on-disk form of one name. On a fault `bytes` is unspecified. `limit` is in bytes.
NameFault encode_file_name(std::u16string_view name, std::string& bytes, std::size_t limit);

/// Replaces `bytes` by the on-disk form of a path ("/" allowed; no check of its components).
/// False when it holds NUL or an unpaired surrogate.
bool encode_path(std::u16string_view path, std::string& bytes);

/// A sentence without capital or full stop, such as "a character of the new name was split in two"; "" for none.
std::string_view describe(NameFault fault);

/// Appends the UTF-8 of a code point, which may be a surrogate.
void append_utf8(char32_t c, std::string& bytes);

/// UTF-8 of any text, for messages and reports: unpaired surrogates become U+FFFD, bytes of invalid names
/// U+EF80…U+EFFF.
std::string to_utf8(std::u16string_view text);

}  // namespace brindle
