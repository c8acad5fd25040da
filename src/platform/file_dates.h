#pragma once

// The dates a disk keeps of a file.

#include <optional>
#include <string>

#include "platform/date.h"

namespace brindle {

struct FileDates {
  Date creation;      ///< when the file was made; the modification date on a disk that does not keep it
  Date modification;  ///< when its content last changed
};

/// The dates of what stands at `path` (bytes), a last symbolic link not followed. None when it cannot be read; `error`
/// is then the system's error number. Any thread.
std::optional<FileDates> file_dates(const std::string& path, int& error);

}  // namespace brindle
