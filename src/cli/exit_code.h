#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace brindle {

/// What `brindle` tells the shell.
enum class ExitCode : int {
  done = 0,         ///< everything asked for was done
  incomplete = 1,   ///< it ran, and some items could not be renamed or restored
  usage = 2,        ///< wrong words or unreadable input
  refused = 3,      ///< the method's parameters were refused; nothing ran
  cancelled = 130,  ///< Ctrl-C between items; the log is saved
};

/// Wrong words, or input that cannot be read: one line that says what, where, and what to do.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(std::string_view line) : std::runtime_error(std::string(line)) {}
};

}  // namespace brindle
