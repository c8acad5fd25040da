#pragma once

#include <stdexcept>

namespace brindle {

/// Wrong words, or input that cannot be read: one line that says what, where, and what to do.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace brindle
