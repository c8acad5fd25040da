#pragma once

// The second look: once every item has its new name, which of them will really get it. Finds the names that two items
// want, tells who has those that are taken, resolves permutations, numbers what clashes where that was chosen, and
// notes what a person should look at twice. Linear in the items.
//
// Any thread, the list the caller's alone until it returns.

#include <cstddef>

#include "list/disk_names.h"
#include "list/file_list.h"
#include "settings/run_choices.h"

namespace brindle {

struct SecondLookResult {
  std::size_t promised = 0;  ///< rows that get their name
  std::size_t problems = 0;
  std::size_t warnings = 0;
};

/// Looks at rows that have been named and checked (run/preview.h). `disk_names` is in a run of tests; null when the
/// disk is not to be asked: names are then compared with those in the list alone, and as a disk that tells case apart
/// does. With OnProblem::none and a problem, no row is promised anything: the names stay, to be seen.
///
/// Extensions are looked at unless `extensions_may_change`.
SecondLookResult look_again(FileList& files, const RunChoices& choices, DiskNames* disk_names,
                            bool extensions_may_change);

}  // namespace brindle
