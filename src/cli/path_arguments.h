#pragma once

// The PATHs of a command line as the core wants them.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments.h"
#include "cli/console.h"

namespace brindle {

/// The current folder, absolute; empty when it is gone.
std::string current_folder();

/// The path made absolute against `folder`, without "." and doubled or trailing "/". What stands before its last ".."
/// is resolved as the system does it, symbolic links included; the rest is kept, so that a link stays a link. Throws
/// UsageError when the path is empty, when it is relative and `folder` is empty, and when what stands before ".." does
/// not exist.
std::string absolute_path(std::string_view path, const std::string& folder);

constexpr std::size_t most_paths = 10'000'000;

/// All PATHs of a line, those read with --from behind the others, absolute. Throws UsageError.
std::vector<std::string> read_paths(const CommandLine& line, const std::string& folder, Console& console);

}  // namespace brindle
