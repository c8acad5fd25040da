#pragma once

// What every program of ours sees to before anything else, and its threads that are there for speed alone.

#include <system_error>
#include <utility>

namespace brindle {

/// Call first in main(), once.
/// Descriptors 0, 1 and 2 that the program was started without are taken by something that can neither be read nor
/// written (EBADF), or the next file to be opened would get what is meant for the person. A file that grows beyond the
/// limit (ulimit -f) is an error of writing, EFBIG, and not the end of the program.
void set_up_process();

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
