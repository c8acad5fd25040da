#include "platform/message_log.h"

#include <cstdio>
#include <string>

namespace brindle {

void log_failure(std::string_view operation, std::string_view reason) {
  log_line(std::string("Error in ").append(operation).append(" : ").append(reason));
}

void log_line(std::string_view text) {
  const std::string line = std::string(text) + '\n';
  // One call, so that the lines of several threads do not mix.
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace brindle
