#pragma once

// Text that a person hands over by the name of a file, or through a pipe.

#include <cstddef>
#include <string>

#include "cli/console.h"

namespace brindle {

constexpr std::size_t input_text_limit = std::size_t{1} << 30;  ///< in bytes

/// The bytes of a file or pipe; "-" is standard input. What there is of it when the run is cancelled. Tells the person
/// when a terminal, or a pipe that nobody writes to, is waited for. Throws UsageError for what cannot be read, what is
/// longer than the limit, and devices, which may have no end.
std::string read_input_text(const std::string& name, Console& console);

}  // namespace brindle
