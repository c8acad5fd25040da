#include "run/apply.h"

#include <cerrno>
#include <ctime>
#include <optional>
#include <vector>

#include "list/file_order.h"
#include "list/open_folder.h"
#include "list/path_follower.h"
#include "methods/general.h"
#include "platform/app_info.h"
#include "platform/own_folders.h"
#include "run/folder_workers.h"
#include "run/rename_row.h"
#include "run/run_log.h"
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
  bool holds_own_data(std::uint32_t row) const;
  void refuse(std::uint32_t row);
  void refuse_problem(std::uint32_t row);
  Status open_log();
  Status write_journal();
  void rename_in_order();
  void rename_by_folder();
  void settle(std::size_t index, const RowOutcome& outcome, const std::string& folder_path);
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
  std::vector<std::uint32_t> rows_;  // that carry a proposed name, in list order
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
      rows_.push_back(row);
    } else if (files_[row].status == ItemStatus::proposed && files_[row].problem != Problem::none) {
      refuse_problem(row);
    } else if (files_[row].status == ItemStatus::proposed) {
      files_.set_status(row, ItemStatus::no_changes);  // the live preview proposes the name that an item has, too
    }
  }
  follows_ = goes_in_location_order(options_) || !folders_are_independent(files_, rows_);
  throttle_ = ProgressThrottle(control_, rows_.size());
}

// Everything that is meant to happen is on disk before anything happens.
Status Run::write_journal() {
  std::vector<bool> told(files_.folders().size());
  std::string path;
  for (const std::uint32_t row : rows_) {
    const ItemRecord& record = files_[row];
    if (!told[record.folder]) {
      path.clear();
      files_.folders().append_path(record.folder, path);
      journal_.add_folder(record.folder, path);
      told[record.folder] = true;
    }
    journal_.add(record.folder, record.name(), record.proposed(), record.inode);
  }
  return journal_.seal();
}

Status Run::open_log() {
  const JournalInfo info{options_.isFolders, follows_, std::string(appVersion())};
  if (Status status = begin_run_log(options_.log_folder, std::time(nullptr), info, journal_, log_); !status.ok()) {
    return status;
  }
  Status status = log_.reserve(log_room(files_, rows_, follows_));
  if (status.ok()) status = write_journal();
  if (status.ok()) return status;
  log_.discard();
  journal_.remove();
  return status;
}

// Brings the list and the log up to date with what became of a row. Rows are settled in list order.
void Run::settle(std::size_t index, const RowOutcome& outcome, const std::string& folder_path) {
  const std::uint32_t row = rows_[index];
  ++result_.attempted;
  if (outcome.status != ItemStatus::renaming_ok) {
    files_.set_status(row, outcome.status);
    files_.set_reason(row, describe_error(outcome.error));
    if (!result_.first_failed) result_.first_failed = row;
    return;
  }
  const ItemRecord& record = files_[row];
  if (logged_) log_.addLogEntry(folder_path, record.name(), folder_path, record.proposed());
  if (follower_) follower_->rename(record.folder, record.name(), record.proposed());
  files_.set_renamed(row);
  ++result_.renamed;
  throttle_.step(result_.attempted, [&] { return files_.path(row); });
}

// One after the other: a rename may change where the next row lies.
void Run::rename_in_order() {
  if (follows_) follower_.emplace(files_);
  OpenFolder folder;
  std::string folder_path;
  FolderId at = FolderTable::none;
  for (std::size_t index = 0; index < rows_.size() && !control_.cancelled(); ++index) {
    const ItemRecord& record = files_[rows_[index]];
    if (record.folder != at) {
      at = record.folder;
      folder_path = files_.folders().path(at);
      folder.open(files_.folders(), at);
    }
    settle(index, rename_row(record, folder.handle(), rules_, logged_ ? &journal_ : nullptr, index), folder_path);
  }
}

void Run::rename_by_folder() {
  FolderWorkers workers(files_, rows_, rules_, logged_ ? &journal_ : nullptr, control_);
  std::string folder_path;
  FolderId at = FolderTable::none;
  for (std::size_t index = 0; index < rows_.size(); ++index) {
    const RowOutcome outcome = workers.take(index);
    if (outcome.status == ItemStatus::none) continue;
    if (files_[rows_[index]].folder != at) {
      at = files_[rows_[index]].folder;
      folder_path = files_.folders().path(at);
    }
    settle(index, outcome, folder_path);
  }
}

void Run::save_log() {
  result_.error = log_.saveLog().reason();
  result_.log_path = log_.saved_path();
  // Without a log the journal is what the next start makes one of.
  if (result_.error.empty()) journal_.remove();
}

void Run::finish() {
  if (logged_) save_log();
  files_.resetFilesDic();
  result_.cancelled = result_.attempted < rows_.size();
  result_.isHasFilesForRenaming = result_.cancelled;
  throttle_.finish(result_.attempted);
  result_.attempted += refused_;
}

ApplyResult Run::make() {
  collect_rows();
  if (!options_.without_log && !rows_.empty()) {
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
