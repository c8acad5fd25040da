#include "platform/message_log.h"

#include <cstdio>
#include <string>

namespace brindle {

void log_failure(std::string_view operation, std::string_view reason) {
  std::string line = "Error in ";
  line.append(operation).append(" : ").append(reason).push_back('\n');
  // One call, so that the lines of several threads do not mix.
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace brindle
