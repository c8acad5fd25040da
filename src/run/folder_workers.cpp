#include "run/folder_workers.h"

#include <algorithm>
#include <chrono>
#include <numeric>
#include <utility>

#include "platform/process.h"
#include "run/name_cycle.h"

namespace brindle {
namespace {

constexpr std::size_t most_threads = 2;  // more only queue up at the disk's own locks
constexpr std::size_t rows_worth_a_thread = 64;

// An outcome in one word: the status above, the errno in the low bits.
std::int32_t pack(const RowOutcome& outcome) {
  return (outcome.is_stranded ? 1 << 24 : 0) | (static_cast<std::int32_t>(outcome.status) << 16) | outcome.error;
}

RowOutcome unpack(std::int32_t packed) {
  return {static_cast<ItemStatus>(packed >> 16 & 0xFF), packed & 0xFFFF, packed >> 24 != 0};
}

}  // namespace

bool folders_are_independent(const FileList& files, std::span<const std::uint32_t> rows) {
  const FolderTable& folders = files.folders();
  return std::all_of(rows.begin(), rows.end(), [&](std::uint32_t row) {
    const ItemRecord& record = files[row];
    return record.kind == 0 || folders.find_child(record.folder, record.name()) == FolderTable::none;
  });
}

FolderWorkers::FolderWorkers(const FileList& files, const RunOrder& order, std::uint64_t run_number,
                             const RowRules& rules, JournalWriter* journal, const JobControl& control)
    : files_(files),
      rows_(order.rows),
      cycles_(order.cycles),
      run_number_(run_number),
      rules_(rules),
      journal_(journal),
      control_(control),
      outcomes_(order.rows.size()) {
  sort_into_tasks();
  const std::size_t useful = std::min(tasks_.size(), 1 + rows_.size() / rows_worth_a_thread);
  const std::size_t cores = std::max<std::size_t>(1, std::thread::hardware_concurrency());
  const std::size_t count = std::min({useful, cores, most_threads});
  threads_.reserve(count);
  while (threads_.size() < count && start_one()) continue;
}

// Without any thread, whoever asks for an outcome does the work.
bool FolderWorkers::start_one() {
  at_work_.fetch_add(1);
  std::jthread thread;
  const bool started = start_thread(thread, [this] { work(); });
  if (started) threads_.push_back(std::move(thread));
  if (!started) at_work_.fetch_sub(1);
  return started;
}

FolderWorkers::~FolderWorkers() = default;

// Folders in the order in which the list first comes to them, each with all of its rows.
void FolderWorkers::sort_into_tasks() {
  constexpr std::uint32_t no_task = UINT32_MAX;
  std::vector<std::uint32_t> task_of(files_.folders().size(), no_task);
  for (const std::uint32_t row : rows_) {
    std::uint32_t& task = task_of[files_[row].folder];
    if (task == no_task) {
      task = static_cast<std::uint32_t>(tasks_.size());
      tasks_.push_back({files_[row].folder, 0, 0});
    }
    ++tasks_[task].end;
  }
  std::uint32_t start = 0;
  for (Task& task : tasks_) {
    const std::uint32_t count = task.end;
    task.begin = task.end = start;
    start += count;
  }
  order_.resize(rows_.size());
  for (std::uint32_t index = 0; index < rows_.size(); ++index)
    order_[tasks_[task_of[files_[rows_[index]].folder]].end++] = index;
}

bool FolderWorkers::rename_next_folder(OpenFolder& folder) {
  const std::size_t task = next_task_++;
  if (task >= tasks_.size() || control_.cancelled()) return false;
  folder.open(files_.folders(), tasks_[task].folder);
  rename_rows(tasks_[task], folder.handle());
  return true;
}

void FolderWorkers::work() {
  OpenFolder folder;
  while (rename_next_folder(folder)) continue;
  at_work_.fetch_sub(1, std::memory_order_release);
}

void FolderWorkers::rename_rows(const Task& task, const FolderHandle& folder) {
  CyclesAhead cycles(cycles_, order_[task.begin]);
  for (std::uint32_t i = task.begin; i < task.end && !control_.cancelled(); ++i) {
    const std::uint32_t index = order_[i];
    if (const RowCycle* cycle = cycles.at(index)) {
      rename_rows_round(*cycle, folder);
      i += cycle->count - 1;
      continue;
    }
    const RowOutcome outcome = rename_row(files_[rows_[index]], folder, rules_, journal_, index);
    outcomes_[index].store(pack(outcome), std::memory_order_release);
  }
}

void FolderWorkers::rename_rows_round(const RowCycle& cycle, const FolderHandle& folder) {
  const std::vector<RowOutcome> outcomes = rename_cycle(files_, rows_.subspan(cycle.first, cycle.count), folder,
                                                        reserved_name(run_number_, cycle.first), journal_, cycle.first);
  for (std::uint32_t i = 0; i < cycle.count; ++i) {
    outcomes_[cycle.first + i].store(pack(outcomes[i]), std::memory_order_release);
  }
}

RowOutcome FolderWorkers::take(std::size_t index) {
  while (threads_.empty() && outcomes_[index] == 0 && rename_next_folder(open_here_)) continue;
  for (;;) {
    // Looked at in this order: who has stopped working has stored all it had to store.
    const bool over = at_work_.load(std::memory_order_acquire) == 0;
    const std::int32_t packed = outcomes_[index].load(std::memory_order_acquire);
    if (packed != 0) return unpack(packed);
    if (over) return {};
    std::this_thread::sleep_for(std::chrono::microseconds(100));
  }
}

}  // namespace brindle
