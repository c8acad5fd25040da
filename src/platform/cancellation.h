#pragma once

// Ctrl-C, and being told to end: finish the item at hand, save the log, go.

#include <atomic>

namespace brindle {

/// From now on SIGINT, SIGTERM and SIGHUP ask for the end instead of forcing it, and a reader that goes away (SIGPIPE)
/// is an error of writing. Call once, before any work.
void catch_signals();

/// Set by these signals; jobs look at it between items. Lives as long as the program.
std::atomic<bool>& cancel_flag();

inline bool is_cancelled() {
  return cancel_flag().load(std::memory_order_relaxed);
}

}  // namespace brindle
