#include "run/apply.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <optional>
#include <random>
#include <span>
#include <vector>

#include "list/file_order.h"
#include "list/open_folder.h"
#include "list/path_follower.h"
#include "methods/general.h"
#include "platform/app_info.h"
#include "platform/own_folders.h"
#include "platform/translation.h"
#include "run/folder_workers.h"
#include "run/name_cycle.h"
#include "run/rename_row.h"
#include "run/run_log.h"
#include "run/run_order.h"
#include "settings/rename_settings.h"

namespace brindle {
namespace {

/// One apply from its journal to its log.
class Run {
 public:
  Run(FileList& files, const ApplyOptions& options, const JobControl& control)
      : files_(files), options_(options), control_(control), throttle_(control) {
    rules_.case_method = !options.is_chain && options.method == Method::general &&
                         options.generalOptionIndex < static_cast<std::int32_t>(GeneralOption::remove_extension);
  }

  ApplyResult make();

 private:
  void collect_rows();
  void order_rows();
  bool holds_own_data(std::uint32_t row) const;
  std::uint64_t look_up_inode(const ItemRecord& record) const;
  void refuse(std::uint32_t row);
  void refuse_problem(std::uint32_t row);
  Status open_log();
  Status write_journal();
  void rename_in_order();
  void rename_by_folder();
  void rename_one(std::uint32_t index, const FolderHandle& folder, const std::string& folder_path);
  void rename_round(const RowCycle& cycle, const FolderHandle& folder, const std::string& folder_path);
  void settle(std::size_t index, const RowOutcome& outcome, const std::string& folder_path);
  void sync_rounds();
  void save_log();
  void finish();

  FileList& files_;
  const ApplyOptions& options_;
  const JobControl& control_;
  ProgressThrottle throttle_;
  RowRules rules_;
  OwnFolders own_folders_;
  std::size_t refused_ = 0;  // rows whose entries must not move
  bool follows_ = false;
  bool logged_ = false;
  bool stranded_ = false;  // an item has neither its old nor its new name
  RunOrder order_;         // the rows that carry a proposed name
  std::uint64_t run_number_ = 0;
  JournalWriter journal_;
  RenameLogWriter log_;
  std::optional<PathFollower> follower_;
  ApplyResult result_;
};

bool Run::holds_own_data(std::uint32_t row) const {
  const ItemRecord& record = files_[row];
  return record.kind != 0 && own_folders_.may_hang_on(record.name(), record.inode) &&
         own_folders_.hang_on(FolderHandle::open(files_.folders().path(record.folder)), record.name_data);
}

void Run::refuse(std::uint32_t row) {
  if (!result_.first_failed) result_.first_failed = row;
  ++refused_;
}

// What was not promised is not tried: the name may have become free, and somebody may rely on that it is not taken.
void Run::refuse_problem(std::uint32_t row) {
  const ItemRecord record = files_[row];
  const bool is_move_refused = record.problem == Problem::no_access || rules_.case_method;
  files_.set_status(row, is_move_refused ? ItemStatus::no_changes : already_exists(record.type()));
  if (record.reason == 0 && is_move_refused) files_.set_reason(row, describe_error(EEXIST));
  files_.set_problem(row, record.problem, record.other);
  files_.set_holder(row, record.holder);
  refuse(row);
}

void Run::collect_rows() {
  own_folders_ = OwnFolders::with_logs_in(options_.log_folder);
  put_in_order_of_run(files_, options_);
  for (std::uint32_t row = 0; row < files_.size(); ++row) {
    if (files_[row].carries_new_name && holds_own_data(row)) {
      files_.set_status(row, ItemStatus::no_changes);
      files_.set_reason(row, brindle::holds_own_data);
      files_.set_problem(row, Problem::no_access);
      refuse(row);
    } else if (files_[row].carries_new_name) {
      order_.rows.push_back(row);
    } else if (files_[row].status == ItemStatus::proposed && files_[row].problem != Problem::none) {
      refuse_problem(row);
    } else if (files_[row].status == ItemStatus::proposed) {
      files_.set_status(row, ItemStatus::no_changes);  // the live preview proposes the name that an item has, too
    }
  }
  follows_ = goes_in_location_order(options_) || !folders_are_independent(files_, order_.rows);
  throttle_ = ProgressThrottle(control_, order_.rows.size());
  if (options_.permute) order_rows();
}

void Run::order_rows() {
  order_ = order_of_run(files_, order_.rows, ask_disk_for_one_entry(files_));
  std::random_device random;
  run_number_ = std::uint64_t{random()} << 32U | random();
}

// By their inodes recovery tells the members of a cycle apart.
std::uint64_t Run::look_up_inode(const ItemRecord& record) const {
  OpenFolder folder;
  folder.open(files_.folders(), record.folder);
  EntryFacts facts;
  return folder.handle() && folder.handle().look_up(record.name_data, facts) ? facts.inode : 0;
}

// Everything that is meant to happen is on disk before anything happens.
Status Run::write_journal() {
  std::vector<bool> told(files_.folders().size());
  std::string path;
  CyclesAhead cycles(order_.cycles, 0);
  std::uint32_t cycle_end = 0;
  for (std::uint32_t index = 0; index < order_.rows.size(); ++index) {
    const ItemRecord& record = files_[order_.rows[index]];
    if (const RowCycle* cycle = cycles.at(index)) {
      journal_.begin_cycle(cycle->count, reserved_name(run_number_, cycle->first));
      cycle_end = cycle->first + cycle->count;
    }
    if (!told[record.folder]) {
      path.clear();
      files_.folders().append_path(record.folder, path);
      journal_.add_folder(record.folder, path);
      told[record.folder] = true;
    }
    journal_.add(record.folder, record.name(), record.proposed(),
                 record.inode == 0 && index < cycle_end ? look_up_inode(record) : record.inode);
  }
  return journal_.seal();
}

Status Run::open_log() {
  const JournalInfo info{options_.isFolders, follows_, std::string(appVersion())};
  if (Status status = begin_run_log(options_.log_folder, std::time(nullptr), info, journal_, log_); !status.ok()) {
    return status;
  }
  Status status = log_.reserve(log_room(files_, order_.rows, follows_));
  if (status.ok()) status = write_journal();
  if (status.ok()) return status;
  log_.discard();
  journal_.remove();
  return status;
}

// Brings the list and the log up to date with what became of a row. Rows are settled in the order of the run.
void Run::settle(std::size_t index, const RowOutcome& outcome, const std::string& folder_path) {
  const std::uint32_t row = order_.rows[index];
  ++result_.attempted;
  if (outcome.status != ItemStatus::renaming_ok) {
    files_.set_status(row, outcome.status);
    files_.set_reason(row, describe_error(outcome.error));
    result_.first_failed = std::min(row, result_.first_failed.value_or(row));
    stranded_ = stranded_ || outcome.is_stranded;
    return;
  }
  const ItemRecord& record = files_[row];
  if (logged_) log_.addLogEntry(folder_path, record.name(), folder_path, record.proposed());
  files_.set_renamed(row);
  ++result_.renamed;
  throttle_.step(result_.attempted, [&] { return files_.path(row); });
}

void Run::rename_one(std::uint32_t index, const FolderHandle& folder, const std::string& folder_path) {
  const ItemRecord& record = files_[order_.rows[index]];
  const RowOutcome outcome = rename_row(record, folder, rules_, logged_ ? &journal_ : nullptr, index);
  if (follower_ && outcome.status == ItemStatus::renaming_ok) {
    follower_->rename(record.folder, record.name(), record.proposed());
  }
  settle(index, outcome, folder_path);
}

void Run::rename_round(const RowCycle& cycle, const FolderHandle& folder, const std::string& folder_path) {
  const std::span<const std::uint32_t> rows = std::span(order_.rows).subspan(cycle.first, cycle.count);
  const std::vector<RowOutcome> outcomes = rename_cycle(files_, rows, folder, reserved_name(run_number_, cycle.first),
                                                        logged_ ? &journal_ : nullptr, cycle.first);
  // All members are renamed, or none; the paths below them change all at once.
  if (follower_ && outcomes.front().status == ItemStatus::renaming_ok) {
    std::vector<NameChange> changes;
    for (const std::uint32_t row : rows) changes.push_back({files_[row].name(), files_[row].proposed()});
    follower_->follow_all(files_[rows.front()].folder, changes);
  }
  for (std::uint32_t i = 0; i < cycle.count; ++i) settle(cycle.first + i, outcomes[i], folder_path);
}

// One after the other: a rename may change where the next row lies.
void Run::rename_in_order() {
  if (follows_) follower_.emplace(files_);
  OpenFolder folder;
  std::string folder_path;
  FolderId at = FolderTable::none;
  CyclesAhead cycles(order_.cycles, 0);
  for (std::uint32_t index = 0; index < order_.rows.size() && !control_.cancelled();) {
    const ItemRecord& record = files_[order_.rows[index]];
    if (record.folder != at) {
      at = record.folder;
      folder_path = files_.folders().path(at);
      folder.open(files_.folders(), at);
    }
    if (const RowCycle* cycle = cycles.at(index)) {
      rename_round(*cycle, folder.handle(), folder_path);
      index += cycle->count;
    } else {
      rename_one(index++, folder.handle(), folder_path);
    }
  }
}

void Run::rename_by_folder() {
  FolderWorkers workers(files_, order_, run_number_, rules_, logged_ ? &journal_ : nullptr, control_);
  std::string folder_path;
  FolderId at = FolderTable::none;
  for (std::size_t index = 0; index < order_.rows.size(); ++index) {
    const RowOutcome outcome = workers.take(index);
    if (outcome.status == ItemStatus::none) continue;
    if (files_[order_.rows[index]].folder != at) {
      at = files_[order_.rows[index]].folder;
      folder_path = files_.folders().path(at);
    }
    settle(index, outcome, folder_path);
  }
}

// A log that tells of exchanges which the disk forgets when the power fails would have them undone that never were.
void Run::sync_rounds() {
  OpenFolder folder;
  FolderId synced = FolderTable::none;
  for (const RowCycle& cycle : order_.cycles) {
    const FolderId at = files_[order_.rows[cycle.first]].folder;
    if (at == synced) continue;
    folder.open(files_.folders(), at);
    folder.handle().sync();
    synced = at;
  }
}

void Run::save_log() {
  sync_rounds();
  if (stranded_) {
    // Recovery gives the names back, and makes the log.
    result_.error = translated(
        "some items have changed names half way only, and could not be given their old names back; start Brindle again "
        "to have that done");
    return;
  }
  result_.error = log_.saveLog().reason();
  result_.log_path = log_.saved_path();
  // Without a log the journal is what the next start makes one of.
  if (result_.error.empty()) journal_.remove();
}

void Run::finish() {
  if (logged_) save_log();
  files_.resetFilesDic();
  result_.cancelled = result_.attempted < order_.rows.size();
  result_.isHasFilesForRenaming = result_.cancelled;
  throttle_.finish(result_.attempted);
  result_.attempted += refused_;
}

ApplyResult Run::make() {
  collect_rows();
  if (!options_.without_log && !order_.rows.empty()) {
    result_.error = open_log().reason();
    result_.log_failed = !result_.error.empty();
    if (result_.log_failed) return result_;
    logged_ = true;
  }
  if (follows_) {
    rename_in_order();
  } else {
    rename_by_folder();
  }
  finish();
  return result_;
}

}  // namespace

bool goes_in_location_order(const ApplyOptions& options) {
  return (options.isFolders && options.isIncludeSubFolders) || options.method == Method::from_list;
}

void put_in_order_of_run(FileList& files, const ApplyOptions& options) {
  if (goes_in_location_order(options)) sort_by_location(files);
}

ApplyResult applyRenames(FileList& files, const ApplyOptions& options, const JobControl& control) {
  return Run(files, options, control).make();
}

}  // namespace brindle
