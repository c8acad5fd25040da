#include "run/rename_row.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/move.h"
#include "run/name_cycle.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

/// A row's entry of the journal.
class RowMarks final : public MoveWatcher {
 public:
  RowMarks(JournalWriter* journal, std::size_t index) : journal_(journal), index_(index) {}
  void set(JournalMark mark) noexcept {
    if (journal_ != nullptr) journal_->mark(index_, mark);
  }
  void half_step() noexcept override { set(JournalMark::half); }

 private:
  JournalWriter* journal_;
  std::size_t index_;
};

// For a folder only another folder counts as taking the name; a file there is a move that failed.
bool is_taken(const ItemRecord& record, const FolderHandle& folder) {
  if (record.type() != ItemType::folder) return true;
  EntryFacts facts;
  return folder.look_up(record.proposed_data, facts) && facts.kind == EntryKind::folder;
}

RowOutcome refused(const ItemRecord& record, const FolderHandle& folder, const RowRules& rules) {
  // On a disk that ignores case, the name in other letters is taken by the very entry that is to be renamed.
  if (differ_in_case_only(record.name(), record.proposed()) &&
      move_changing_case(folder, record.name_data, record.proposed_data) == 0) {
    return {ItemStatus::renaming_ok, 0};
  }
  if (!rules.case_method && is_taken(record, folder)) return {already_exists(record.type()), 0};
  return {ItemStatus::no_changes, EEXIST};
}

RowOutcome attempt(const ItemRecord& record, const FolderHandle& folder, const RowRules& rules, MoveWatcher& watcher) {
  if (!folder) return {ItemStatus::no_changes, folder.error()};
  const int error = move_exclusively(folder, record.name_data, folder, record.proposed_data, &watcher);
  if (error == 0) return {ItemStatus::renaming_ok, 0};
  if (error == EEXIST) return refused(record, folder, rules);
  return {ItemStatus::no_changes, error};
}

}  // namespace

RowOutcome rename_row(const ItemRecord& record, const FolderHandle& folder, const RowRules& rules,
                      JournalWriter* journal, std::size_t index) {
  RowMarks marks(journal, index);
  marks.set(JournalMark::begun);
  const RowOutcome outcome = attempt(record, folder, rules, marks);
  marks.set(outcome.status == ItemStatus::renaming_ok ? JournalMark::done : JournalMark::failed);
  return outcome;
}

std::vector<RowOutcome> rename_cycle(const FileList& files, std::span<const std::uint32_t> rows,
                                     const FolderHandle& folder, const std::string& reserved, JournalWriter* journal,
                                     std::size_t first) {
  if (!folder) return std::vector<RowOutcome>(rows.size(), {ItemStatus::no_changes, folder.error()});
  std::vector<CycleMember> members;
  members.reserve(rows.size());
  for (const std::uint32_t row : rows) {
    members.push_back({files[row].name_data, files[row].proposed_data, files[row].inode});
  }
  const auto mark = [=](std::size_t member, JournalMark now) {
    if (journal != nullptr) journal->mark(first + member, now);
  };
  NameCycle cycle(folder, std::move(members), reserved, mark);
  const int error = cycle.carry_out();
  if (error == 0) return std::vector<RowOutcome>(rows.size(), {ItemStatus::renaming_ok, 0});
  const bool is_stranded = !cycle.is_at(CycleGoal::old_names);
  std::vector<RowOutcome> outcomes(rows.size(), {ItemStatus::no_changes, another_of_cycle_failed, is_stranded});
  outcomes[cycle.failed_member()].error = error;
  for (std::size_t member = 0; member < rows.size() && !is_stranded; ++member) mark(member, JournalMark::failed);
  return outcomes;
}

std::string_view describe_error(int error) {
  if (error == 0) return {};
  if (error == another_stands_there) return to_translate("another file has its name by now");
  if (error == another_of_cycle_failed)
    return to_translate("it changes names with others, and one of them cannot be renamed");
  if (error == ESTALE) return "its folder is not the one that was listed any more";
  if (error == ELOOP) return "a symbolic link stands in the way to it";
  if (error == ENOTSUP) return "this disk cannot rename without the risk of replacing another file";
  return ::strerrordesc_np(error);
}

namespace {

bool is_taken(FileList& files, std::size_t row, DiskNames& disk_names) {
  const ItemRecord& record = files[row];
  if (!disk_names.exists(record.proposed())) return false;
  const bool is_case_change = differ_in_case_only(record.name(), record.proposed());
  if (is_case_change && !disk_names.is_another_entry(record.name(), record.proposed())) return false;
  if (!is_case_change) files.set_status(row, already_exists(record.type()));
  files.set_problem(row, Problem::taken);
  return true;
}

}  // namespace

bool check_new_name(FileList& files, std::size_t row, DiskNames& disk_names) {
  const ItemRecord& record = files[row];
  if (record.proposed() == record.name()) {
    files.set_status(row, ItemStatus::no_changes);
    return false;
  }
  if (record.kind != 0 && disk_names.holds_own_data(record.name(), record.inode)) {
    files.set_status(row, ItemStatus::no_changes);
    files.set_reason(row, brindle::holds_own_data);
    files.set_problem(row, Problem::no_access);
    return false;
  }
  if (const int error = disk_names.rename_error(record.name()); error != 0) {
    files.set_reason(row, describe_error(error));
    files.set_problem(row, Problem::no_access);
    return false;
  }
  return !is_taken(files, row, disk_names);
}

}  // namespace brindle
