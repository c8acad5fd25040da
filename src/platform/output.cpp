#include "platform/output.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace brindle {

void Output::flush() {
  std::string_view rest = closed_ ? std::string_view() : std::string_view(buffer_);
  while (!rest.empty()) {
    const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
    if (written >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      if (errno != EPIPE) error_ = errno;
      closed_ = true;
      break;
    }
  }
  buffer_.clear();
}

}  // namespace brindle
