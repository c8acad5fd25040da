#pragma once

// Lines for whoever looks into why something did not work: they go to standard error, where a desktop session keeps
// them.

#include <string_view>

namespace brindle {

/// "Error in OPERATION : REASON", one line. Any thread.
void log_failure(std::string_view operation, std::string_view reason);
/// A line in other words. Any thread.
void log_line(std::string_view text);

}  // namespace brindle
