#pragma once

// The text of a rename list taken apart, and its lines looked up. Any thread; pure but for the look-up. Views are into
// the text.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gather/list_import.h"
#include "text/text_arena.h"

namespace brindle {

/// The three fields of a line, trimmed.
struct ListRow {
  std::string_view filename;
  std::string_view newFilename;
  std::string_view location;
};

/// Why bytes are no list at all, as in "line 3 is not valid UTF-8"; "" when they can be read.
std::string list_text_fault(std::string_view bytes);

struct ListRows {
  std::vector<ListRow> rows;
  std::size_t odd_lines = 0;  ///< lines with something in them that is not three fields
};

/// The usable lines behind the header.
ListRows list_rows(std::string_view bytes, const ListTitles& titles);

/// Whether text holds anything that ends a line for some program: U+000A to U+000D, U+0085, U+2028 or U+2029.
bool holds_line_break(std::string_view text);

/// Whether bytes can be the name of one entry of a folder.
bool is_entry_name(std::string_view name);

/// The on-disk bytes of a field: of a name ("/" is ":"), and of a location.
std::string disk_name(std::string_view field);
std::string disk_location(std::string_view field);

/// Takes off the quotes that spreadsheets put around fields, and halves doubled quotes inside. False when the field has
/// none; then `plain` is the field as it is.
bool without_quotes(std::string_view field, std::string& plain);

/// What a line stands for, in on-disk bytes. Views are into the arena that was given.
struct FoundItem {
  std::string_view path;      ///< real as far as the disk knows it
  std::string_view new_name;  ///< for an existing item never empty, for a missing one always
  bool exists = false;
};

/// The items that the lines stand for, looked up on disk a folder at a time: one a row, in order.
std::vector<FoundItem> look_up_rows(std::span<const ListRow> rows, TextArena& texts);

}  // namespace brindle
