#include "run/preview.h"

#include <algorithm>
#include <cerrno>
#include <vector>

#include "list/file_order.h"
#include "methods/rename_plan.h"
#include "platform/file_name.h"
#include "platform/translation.h"
#include "run/rename_row.h"
#include "run/second_look.h"

namespace brindle {
namespace {

constexpr std::size_t usual_name_limit = 255;

/// What the two kinds of preview have in common: the counters, the operations, the outcome.
class PreviewRun {
 public:
  PreviewRun(FileList& files, RenamePlan& plan, const JobControl& control, const RunChoices& choices)
      : files_(files), plan_(plan), control_(control), choices_(choices) {
    if (plan.resets_on_folder()) sort_by_location(files);
    plan.reset_counters();
    metadata_.emplace(files, plan);
  }

  PreviewResult full(DiskNames& disk_names);
  PreviewResult quick(std::size_t limit);

 private:
  bool stop() {
    outcome_.cancelled = outcome_.cancelled || control_.cancelled();
    return outcome_.cancelled;
  }

  void enter_folder_of(std::size_t row) {
    const bool is_new = row > 0 && files_[row].folder != files_[row - 1].folder;
    if (is_new && plan_.resets_on_folder()) plan_.reset_counters();
  }

  void make_name(std::size_t row, std::size_t name_limit);
  void keep_loaded_name(std::size_t row, std::size_t name_limit);
  void note_failure(std::size_t row);
  void check(std::size_t row, DiskNames& disk_names);
  void preview_row(std::size_t row, DiskNames& disk_names);
  void look_again(DiskNames* disk_names);
  std::vector<std::uint32_t> count_rows_by_folder() const;

  FileList& files_;
  RenamePlan& plan_;
  const JobControl& control_;
  const RunChoices& choices_;
  std::optional<MetadataWindow> metadata_;  // once the list has its order
  FileSystemItem item_;
  std::u16string error_;
  PreviewResult outcome_;
};

// Runs the operations on a row and stores what they made. A row whose operations fail keeps its name and says why.
void PreviewRun::make_name(std::size_t row, std::size_t name_limit) {
  if (plan_.keeps_loaded_names()) return keep_loaded_name(row, name_limit);
  files_.read_without_new_name(row, item_);
  if (!plan_.empty()) {
    error_.clear();
    const std::optional<ItemMetadata> metadata = metadata_->take(row);
    const bool made = plan_.run(item_, error_, metadata ? &*metadata : nullptr);
    if (!made) note_failure(row);
    // A failure stays with the run: later successes do not make it good.
    outcome_.result = made && !outcome_.error_row;
  }
  files_.write(row, item_, name_limit);
  if (plan_.remark() != Warning::none) files_.set_warning(row, plan_.remark());
}

// What was asked for counts once more, whatever stood in its way the last time.
void PreviewRun::keep_loaded_name(std::size_t row, std::size_t name_limit) {
  const ItemRecord& record = files_[row];
  if (record.status != ItemStatus::proposed && record.problem != Problem::taken) return;
  const std::string name(record.proposed());
  files_.set_reason(row, {});
  if (name.size() > name_limit) return files_.refuse_unwritable(row, NameFault::too_long, name, name_limit);
  files_.promise(row, name);
}

void PreviewRun::note_failure(std::size_t row) {
  item_.setNewFilename(ItemStatus::no_changes);
  item_.set_reason(error_);
  if (outcome_.error_row) return;
  outcome_.error = error_;
  outcome_.error_row = row;
}

// Settles a row that has been named: is it a change, and is the name free?
void PreviewRun::check(std::size_t row, DiskNames& disk_names) {
  const ItemRecord& record = files_[row];
  if (record.status == ItemStatus::none) {
    const Warning warning = record.warning;
    files_.set_status(row, ItemStatus::no_changes);
    files_.set_warning(row, warning);
  } else if (record.status != ItemStatus::proposed) {
    if (record.reason != 0 || plan_.keeps_loaded_names()) return;
    files_.set_reason(row, status_text_reason);
    files_.set_problem(row, Problem::unwritable);
  } else {
    check_new_name(files_, row, disk_names);
  }
}

void PreviewRun::preview_row(std::size_t row, DiskNames& disk_names) {
  if (!disk_names.exists(files_[row].name())) {
    files_.set_status(row, not_found(files_[row].type()));
    const int error = disk_names.error();
    files_.set_reason(row, error == ENOENT || error == ENOTDIR ? std::string_view() : describe_error(error));
    files_.set_problem(row, Problem::gone);
    return;
  }
  if (plan_.keeps_loaded_names() && files_[row].problem == Problem::unwritable) return files_.keep_new_name(row);
  make_name(row, disk_names.name_limit());
  check(row, disk_names);
}

std::vector<std::uint32_t> PreviewRun::count_rows_by_folder() const {
  std::vector<std::uint32_t> counts(files_.folders().size());
  for (const ItemRecord& record : files_.items()) ++counts[record.folder];
  return counts;
}

void PreviewRun::look_again(DiskNames* disk_names) {
  const SecondLookResult looked = brindle::look_again(files_, choices_, disk_names, plan_.may_change_extensions());
  outcome_.renameable = looked.promised;
  outcome_.problems = looked.problems;
  outcome_.warnings = looked.warnings;
}

PreviewResult PreviewRun::full(DiskNames& disk_names) {
  const std::vector<std::uint32_t> rows_in_folder = count_rows_by_folder();
  ProgressThrottle throttle(control_, files_.size());
  disk_names.begin_run(files_.folders());
  files_.begin_new_names();
  for (std::size_t row = 0; row < files_.size() && !stop(); ++row) {
    enter_folder_of(row);
    disk_names.enter(files_[row].folder, std::size_t{2} * rows_in_folder[files_[row].folder]);
    throttle.step(row, [&] { return files_.path(row); });
    preview_row(row, disk_names);
    ++outcome_.processed;
  }
  if (!outcome_.cancelled) look_again(&disk_names);
  files_.end_new_names(!outcome_.cancelled);
  throttle.finish(outcome_.processed);
  outcome_.result = outcome_.result || plan_.keeps_loaded_names();
  outcome_.isHasFilesForRenaming = outcome_.renameable > 0;
  return outcome_;
}

PreviewResult PreviewRun::quick(std::size_t limit) {
  files_.reset_new_names(ItemStatus::no_new_name);
  for (std::size_t row = 0; row < files_.size() && !stop(); ++row) {
    enter_folder_of(row);
    files_.set_status(row, ItemStatus::none);
    make_name(row, usual_name_limit);
    if (++outcome_.processed == limit) break;
  }
  look_again(nullptr);
  outcome_.result = outcome_.result || plan_.keeps_loaded_names();
  outcome_.isHasFilesForRenaming = outcome_.result;
  return outcome_;
}

}  // namespace

PreviewResult preview(FileList& files, RenamePlan& plan, DiskNames& disk_names, const JobControl& control,
                      const RunChoices& choices) {
  return PreviewRun(files, plan, control, choices).full(disk_names);
}

PreviewResult quickPreview(FileList& files, RenamePlan& plan, std::size_t limit, const JobControl& control,
                           const RunChoices& choices) {
  return PreviewRun(files, plan, control, choices).quick(limit);
}

}  // namespace brindle
