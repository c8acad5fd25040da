#pragma once

// An item's problem or warning as a person reads it, in the user's language, on one line. Any thread.

#include <cstddef>
#include <string>

#include "list/file_list.h"

namespace brindle {

/// Why the row will not get its name; empty for a row without a problem.
std::string problem_text(const FileList& files, std::size_t row);
/// Why to look twice at the row; empty for a row without a warning.
std::string warning_text(const FileList& files, std::size_t row);
/// The path (bytes) of what stands in the row's way; empty where that is nothing in particular.
std::string problem_with(const FileList& files, std::size_t row);

}  // namespace brindle
