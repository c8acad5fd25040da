#pragma once

// A cycle of names as the journal of an interrupted run has it: settled by the next start. One thread.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "list/folder_table.h"
#include "log/journal.h"
#include "platform/status.h"

namespace brindle {

class StoppedCycle {
 public:
  /// `folder` is where its entries lie now. The journal outlives this.
  StoppedCycle(JournalReader& journal, const JournalCycle& recorded, std::string_view folder);

  /// Finds out where the members are. When all have their new names it was done, when all have their old ones it was
  /// not; else all get their old names back, or their new ones when all but the first had theirs. Fails, with a
  /// sentence, when a member cannot get its name: then it is left where it is. May be killed, and done again.
  Status settle();

  /// After settle(): whether a member has its new name.
  bool is_renamed(std::size_t member) const { return renamed_[member]; }
  /// As they were when the cycle's turn came; valid as long as this.
  NameChange names(std::size_t member) const { return {old_names_[member], new_names_[member]}; }
  const std::string& folder() const { return folder_; }

 private:
  JournalMark mark(std::size_t member) const { return journal_.entries()[recorded_.first + member].mark; }
  bool all_marked(JournalMark wanted, std::size_t from) const;
  Status settle_in(const FolderHandle& folder);

  JournalReader& journal_;
  JournalCycle recorded_;
  std::string folder_;
  std::vector<std::string> old_names_;
  std::vector<std::string> new_names_;
  std::vector<bool> renamed_;
};

}  // namespace brindle
