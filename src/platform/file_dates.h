#pragma once

// The dates a disk keeps of a file.

#include <string>

#include "platform/date.h"
#include "platform/status.h"

namespace brindle {

struct FileDates {
  Date creation;      ///< when the file was made; the modification date on a disk that does not keep it
  Date modification;  ///< when its content last changed
};

/// The dates of what stands at `path` (bytes), a last symbolic link not followed. The reason is a clause that names no
/// file; its errno is set. Any thread.
Result<FileDates> file_dates(const std::string& path);

}  // namespace brindle
