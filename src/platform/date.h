#pragma once

// The one type for moments in time.

#include <chrono>

namespace brindle {

/// A moment, in milliseconds since 1970 (UTC).
using Date = std::chrono::sys_time<std::chrono::milliseconds>;

}  // namespace brindle
