#pragma once

// Renames on several threads: one folder is one thread's at a time (the kernel locks a folder for each rename anyway),
// and within a folder the order of the list holds.

#include <atomic>
#include <cstdint>
#include <span>
#include <thread>
#include <vector>

#include "list/file_list.h"
#include "list/open_folder.h"
#include "log/journal.h"
#include "platform/job.h"
#include "run/rename_row.h"
#include "run/run_order.h"

namespace brindle {

/// Whether no renaming of these rows can change where another row lies: then their folders may be dealt with in any
/// order.
bool folders_are_independent(const FileList& files, std::span<const std::uint32_t> rows);

/// Renames rows in the background and hands out the outcomes in their order. While it works, the owner may change rows
/// whose outcome it has taken, and nothing else of the list.
class FolderWorkers {
 public:
  /// `order` must stay as it is; `journal` may be null. Starts at once, on as many threads as pay.
  FolderWorkers(const FileList& files, const RunOrder& order, std::uint64_t run_number, const RowRules& rules,
                JournalWriter* journal, const JobControl& control);
  FolderWorkers(const FolderWorkers&) = delete;
  FolderWorkers& operator=(const FolderWorkers&) = delete;
  ~FolderWorkers();

  /// The outcome of rows[index]; waits for it. Status `none` when the run was cancelled before it was reached.
  RowOutcome take(std::size_t index);

 private:
  /// The rows of one folder: a part of order_.
  struct Task {
    FolderId folder = 0;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
  };

  void sort_into_tasks();
  bool start_one();
  bool rename_next_folder(OpenFolder& folder);
  void work();
  void rename_rows(const Task& task, const FolderHandle& folder);
  void rename_rows_round(const RowCycle& cycle, const FolderHandle& folder);

  const FileList& files_;
  std::span<const std::uint32_t> rows_;
  std::span<const RowCycle> cycles_;
  std::uint64_t run_number_;
  RowRules rules_;
  JournalWriter* journal_;
  const JobControl& control_;
  std::vector<std::uint32_t> order_;  // indexes into rows_, folder by folder
  std::vector<Task> tasks_;
  std::atomic<std::size_t> next_task_{0};
  std::vector<std::atomic<std::int32_t>> outcomes_;  // packed; 0 while not known
  std::atomic<std::size_t> at_work_{0};
  OpenFolder open_here_;  // the owner's, who renames where no thread could be started
  std::vector<std::jthread> threads_;
};

}  // namespace brindle
