#pragma once

// What the words of a command line lead to: PATHs as the core wants them, and text in a file or a pipe.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cli/arguments.h"
#include "cli/console.h"

namespace brindle {

constexpr std::size_t input_text_limit = std::size_t{1} << 30;  ///< in bytes

/// The bytes of a file or pipe; "-" is standard input. What there is of it when the run is cancelled. Tells the person
/// when a terminal, or a pipe that nobody writes to, is waited for. Throws UsageError for what cannot be read, what is
/// longer than the limit, and devices, which may have no end.
std::string read_input_text(const std::string& name, Console& console);

/// What a path stands for (platform/real_path.h). Throws UsageError when it is empty, when it is relative and the
/// current folder is gone, and when it cannot be had.
std::string real_path(std::string_view given);

constexpr std::size_t most_paths = 10'000'000;

/// All PATHs of a line as they were given, those read with --from behind the others. `folder` is the current one.
/// Throws UsageError for those that cannot mean anything.
std::vector<std::string> read_paths(const CommandLine& line, const std::string& folder, Console& console);

}  // namespace brindle
