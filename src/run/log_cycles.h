#pragma once

// What the entries of a log have to do with one another: which passed their names round, and whether any took over the
// name of another one.

#include <cstddef>
#include <vector>

#include "log/rename_log.h"

namespace brindle {

/// Entries, one behind the other and of one folder: each took over the name of the next, and the last that of the
/// first.
struct LogCycle {
  std::size_t first = 0;
  std::size_t count = 0;    ///< two or more
  bool is_certain = false;  ///< else the names are the same but for letter case, and the disk knows whether they are
};

/// All of them, rising. Linear.
std::vector<LogCycle> cycles_in(const LogFile& log);
/// The one that an entry belongs to; else null.
const LogCycle* cycle_around(const std::vector<LogCycle>& cycles, std::size_t entry);

/// Whether the new name of an entry may be the old name of another one: true when it is, and rarely when not.
bool take_over_names(const LogFile& log);

}  // namespace brindle
