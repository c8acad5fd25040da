#include "platform/date.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/atomic_file.h"

namespace brindle {
namespace {

Date to_date(const struct statx_timestamp& stamp) {
  return Date(std::chrono::seconds(stamp.tv_sec) + std::chrono::milliseconds(stamp.tv_nsec / 1'000'000));
}

}  // namespace

Result<FileDates> file_dates(const std::string& path) {
  struct statx found {};
  if (statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_MTIME | STATX_BTIME, &found) != 0) {
    const int error = errno;
    return Status(system_error_text(error), error);
  }
  const Date modification = to_date(found.stx_mtime);
  const bool has_birth = (found.stx_mask & STATX_BTIME) != 0;
  return FileDates{has_birth ? to_date(found.stx_btime) : modification, modification};
}

}  // namespace brindle
