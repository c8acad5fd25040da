#pragma once

// Moments in time, what clocks show, and the dates that a disk keeps of a file. Any thread.

#include <chrono>
#include <string>

#include "platform/status.h"

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

struct FileDates {
  Date creation;      ///< when the file was made; the modification date on a disk that does not keep it
  Date modification;  ///< when its content last changed
};

/// The dates of what stands at `path` (bytes), a last symbolic link not followed. The reason is a clause that names no
/// file; its errno is set. Any thread.
Result<FileDates> file_dates(const std::string& path);

}  // namespace brindle
