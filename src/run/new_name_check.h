#pragma once

// Whether a row's proposed name is a change, and free.

#include <string_view>

#include "list/disk_names.h"
#include "list/file_list.h"

namespace brindle {

/// Why a new name that reads like a status is none; a key of the string table.
inline constexpr std::string_view status_text_reason = "the new name is one of the texts that stand for a status";

/// Settles a row that has a proposed name: "No Changes" when it is the name that the item has, with the reason when
/// the program's own data hangs on that name, "… Already Exists" when something else in the folder has it (a change of
/// case alone is always let through). True when the item can be renamed. `disk_names` has entered the row's folder.
bool check_new_name(FileList& files, std::size_t row, DiskNames& disk_names);

}  // namespace brindle
