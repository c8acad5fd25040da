#pragma once

// The PATHs of a command line as the core wants them.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments.h"
#include "cli/console.h"

namespace brindle {

/// What a path stands for (platform/real_path.h). Throws UsageError when it is empty, when it is relative and the
/// current folder is gone, and when it cannot be had.
std::string real_path(std::string_view given);

constexpr std::size_t most_paths = 10'000'000;

/// All PATHs of a line as they were given, those read with --from behind the others. `folder` is the current one.
/// Throws UsageError for those that cannot mean anything.
std::vector<std::string> read_paths(const CommandLine& line, const std::string& folder, Console& console);

}  // namespace brindle
