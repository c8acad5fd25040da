#pragma once

// What a log is about, told without keeping its entries. Any thread.

#include <cstddef>
#include <string>

#include "platform/status.h"

namespace brindle {

struct LogOutline {
  std::size_t folders = 0;    ///< how many different ones its items were in, under the names of their time
  std::string common_folder;  ///< the folder that all of these are, or are below; empty without usable entries
  std::string old_name;       ///< of the first entry that can be used; empty when there is none
  std::string new_name;
};

/// Reads a log for its outline. One of this program's layout costs little more than reading the file, and the entries
/// of which a folder is new; any other is read as a whole. Fails as readLogFile does.
Result<LogOutline> read_log_outline(const std::string& path);

}  // namespace brindle
