#pragma once

// The one type for moments in time, and where they come from.

#include <chrono>

namespace brindle {

/// A moment, in milliseconds since 1970 (UTC).
using Date = std::chrono::sys_time<std::chrono::milliseconds>;

/// The moment of the call, by the system's clock. Any thread.
inline Date current_time() {
  return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

}  // namespace brindle
