#pragma once

// The types for moments in time and for what clocks show, and where moments come from.

#include <chrono>

namespace brindle {

/// A moment, in milliseconds since 1970 (UTC).
using Date = std::chrono::sys_time<std::chrono::milliseconds>;

/// What a clock on the wall shows, in milliseconds since 1970 by that clock: a stamp without a zone. Clocks that are
/// changed show some of them twice and others never.
using WallTime = std::chrono::local_time<std::chrono::milliseconds>;

/// The moment of the call, by the system's clock. Any thread.
inline Date current_time() {
  return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

}  // namespace brindle
