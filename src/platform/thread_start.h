#pragma once

// Threads that are there for speed alone: where the system has none left (a limit of processes, a full table), the work
// is done without them.

#include <system_error>
#include <utility>

namespace brindle {

/// Begins `work` on `thread`, a std::thread or std::jthread that does nothing. False when the system has no thread for
/// it: `work` was not called then, and is gone.
template <class Thread, class Work>
[[nodiscard]] bool start_thread(Thread& thread, Work&& work) {
  try {
    thread = Thread(std::forward<Work>(work));
    return true;
  } catch (const std::system_error&) {
    return false;
  }
}

}  // namespace brindle
