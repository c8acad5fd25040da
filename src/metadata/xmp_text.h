#pragma once

// A few XMP entries, found by searching a file for their tags as plain text: this needs no knowledge of the file's
// format, and finds nothing in packets that write the entries as attributes.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace brindle {

enum class XmpEntry : std::uint8_t {
  marked,         ///< <xmpRights:Marked>, found in any letter case
  web_statement,  ///< <xmpRights:WebStatement>
  date_created,   ///< <photoshop:DateCreated>
};
inline constexpr std::size_t xmp_entry_count = 3;

/// What stands between the first opening and the first closing tag of each entry, as written; none when either is
/// missing, when they stand the wrong way round, or when more than 64 KiB lie between them.
struct XmpTexts {
  std::array<std::optional<std::u16string>, xmp_entry_count> entries;

  const std::optional<std::u16string>& operator[](XmpEntry entry) const {
    return entries[static_cast<std::size_t>(entry)];
  }
};

/// Which entries are asked for.
struct XmpEntries {
  std::array<bool, xmp_entry_count> wanted{};

  void add(XmpEntry entry) { wanted[static_cast<std::size_t>(entry)] = true; }
  void remove(XmpEntry entry) { wanted[static_cast<std::size_t>(entry)] = false; }
  bool any() const;
};

/// Searches the file, once and piece by piece, to the last tag or to its end; a file above 4 GiB, or one that cannot be
/// read, holds nothing. Any thread.
XmpTexts find_xmp_texts(const std::string& path, XmpEntries entries);

}  // namespace brindle
