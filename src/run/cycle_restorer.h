#pragma once

// Entries of a log that passed their names round get their old names back: all of them, or none. One thread.

#include <cstddef>
#include <string_view>
#include <vector>

#include "log/rename_log.h"
#include "log/undo_progress.h"
#include "run/log_cycles.h"
#include "run/name_cycle.h"
#include "run/restorer.h"

namespace brindle {

class CycleRestorer {
 public:
  /// `cycles` are those of the log.
  CycleRestorer(const LogFile& log, const std::vector<LogCycle>& cycles, UndoProgress& progress, Restorer& restorer)
      : log_(log), cycles_(cycles), progress_(progress), restorer_(restorer) {}

  enum class Outcome {
    moved,     ///< all have their old names
    restored,  ///< an undo before this one had seen to that
    left,      ///< all keep their new names
    no_cycle,  ///< on this disk, the names are not the same: each entry is for itself
  };
  Outcome restore(const LogCycle& cycle);
  /// Takes the one over which an undo before this one was stopped to its end, if there is such a one: or nobody could
  /// tell where what lies in its folders is now.
  void finish_stopped();
  /// Why an entry of the cycle was left alone; valid until the next call.
  std::string_view reason(std::size_t entry) const { return entry == failed_ ? reason_ : reason_of_others_; }

 private:
  bool is_one(const LogCycle& cycle, const FolderHandle& folder) const;
  bool all_marked(const LogCycle& cycle, UndoMark mark) const;
  bool is_to_go_on(const LogCycle& cycle) const;
  CycleTraces traces(const LogCycle& cycle) const;
  std::vector<CycleMember> members(const LogCycle& cycle, bool goes_on) const;
  NameCycle names_of(const LogCycle& cycle, const FolderHandle& folder, bool goes_on);
  bool is_written_down(std::size_t first, const std::vector<std::uint64_t>& inodes) const;
  bool write_down(const LogCycle& cycle, const FolderHandle& folder);
  Outcome start(const LogCycle& cycle, const FolderHandle& folder);
  Outcome go_on(const LogCycle& cycle, const FolderHandle& folder);
  Outcome leave(const LogCycle& cycle, int error, std::size_t failed);
  Outcome leave_all(const LogCycle& cycle, std::string_view reason);

  const LogFile& log_;
  const std::vector<LogCycle>& cycles_;
  UndoProgress& progress_;
  Restorer& restorer_;
  std::size_t written_from_ = 0;  // the entries whose inodes were written down last
  std::vector<std::uint64_t> written_;
  std::size_t failed_ = 0;
  std::string_view reason_;
  std::string_view reason_of_others_;
};

}  // namespace brindle
