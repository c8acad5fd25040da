#include "platform/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace brindle {

void set_up_process() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    // The lowest that is free is given out, so it is this one; where there is nothing else, there is "/".
    if (::fcntl(descriptor, F_GETFD) < 0 && errno == EBADF && ::open("/", O_PATH) < 0) break;
  }
  // Caught, not ignored: that would go on to the programs that are started.
  struct sigaction action {};
  action.sa_handler = [](int) {};
  action.sa_flags = SA_RESTART;
  ::sigaction(SIGXFSZ, &action, nullptr);
}

}  // namespace brindle
