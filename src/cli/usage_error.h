#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace brindle {

/// Wrong words, or input that cannot be read: one line that says what, where, and what to do.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(std::string_view line) : std::runtime_error(std::string(line)) {}
};

}  // namespace brindle
