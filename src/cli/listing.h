#pragma once

// The list with its new names, for people: on a terminal grouped by folder, in columns, with what changes set off; on a
// pipe one plain line an item, "path -> new name" or "path: status (reason)".

#include <string>
#include <string_view>

#include "cli/console.h"
#include "list/file_list.h"

namespace brindle {

/// Prints the rows. Those that keep their name and have no reason to change are left out unless `all` is set. Paths
/// below `folder` are shown relative to it.
void print_listing(const FileList& files, std::string_view folder, bool all, Console& console);

/// A path as a person in `folder` would write it; "." for the folder itself. The whole path when `folder` is
/// empty.
std::string_view relative_path(std::string_view path, std::string_view folder);

/// A status and, in words, why: "File Already Exists", or "No Changes: the name would be too long".
std::string status_and_reason(const FileList& files, std::size_t row);

}  // namespace brindle
