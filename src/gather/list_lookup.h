#pragma once

// The items that the lines of a rename list stand for, looked up on disk a folder at a time. One thread.

#include <span>
#include <string>
#include <vector>

#include "gather/list_rows.h"
#include "text/text_arena.h"

namespace brindle {

/// What a line stands for, in on-disk bytes. Views are into the arena that was given.
struct FoundItem {
  std::string_view path;      ///< real as far as the disk knows it
  std::string_view new_name;  ///< for an existing item never empty, for a missing one always
  bool exists = false;
};

/// One result a row, in order.
std::vector<FoundItem> look_up_rows(std::span<const ListRow> rows, TextArena& texts);

}  // namespace brindle
