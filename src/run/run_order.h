#pragma once

// The order in which the rows of a run are renamed where any permutation of names may be asked for: whoever holds a
// name that another row is to get leaves it first, and rows that pass their names round in a ring are one cycle. One
// thread.

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "list/file_list.h"

namespace brindle {

/// Rows that pass their names round: each gets the name that the next one has, and the last that of the first.
struct RowCycle {
  std::uint32_t first = 0;  ///< place of its first row in RunOrder::rows; the others follow
  std::uint32_t count = 0;  ///< two or more
};

struct RunOrder {
  std::vector<std::uint32_t> rows;
  std::vector<RowCycle> cycles;  ///< by rising place
};

/// The cycles of a run, met one after the other while the places rise.
class CyclesAhead {
 public:
  /// From this place on. The cycles must stay where they are.
  CyclesAhead(std::span<const RowCycle> cycles, std::uint32_t place);
  /// The cycle that begins at a place not below those asked about before; else null.
  const RowCycle* at(std::uint32_t place);

 private:
  std::span<const RowCycle> ahead_;
};

/// Whether two names (NUL-terminated) that differ in letter case alone lead to one entry of the folder. Asked only
/// about a name that a row is to get and one that another row of the folder has.
using IsOneEntry = std::function<bool(FolderId folder, const char* name, const char* other)>;

/// Orders rows that carry proposed names. They keep their order, but for rows that must leave a name beforehand: these
/// come just before the row that gets it, in their folder's turn. Linear; one table for all rows.
RunOrder order_of_run(const FileList& files, std::span<const std::uint32_t> rows, const IsOneEntry& is_one_entry);

/// Asks the disk. Keeps the folder asked last open.
IsOneEntry ask_disk_for_one_entry(const FileList& files);

}  // namespace brindle
