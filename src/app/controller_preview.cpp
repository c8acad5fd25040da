// The full preview of a method and of a chain, and names typed by hand.

#include <algorithm>
#include <utility>

#include "app/brindle_app_controller.h"
#include "methods/rename_plan.h"
#include "methods/validation.h"
#include "platform/app_info.h"
#include "platform/file_name.h"
#include "run/rename_row.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

constexpr std::u16string_view is_status_text = u"the new name is one of the texts that stand for a status";

}  // namespace

void BrindleAppController::actionPreview() {
  if (defer([this] { actionPreview(); })) return;
  if (rules_.isOpen() && !rules_.rules().empty()) {
    ports_.main_thread.cancel_timer(previewRuleTimer_);
    previewRuleTimer_ = ports_.main_thread.start_timer(std::chrono::milliseconds(500), [this] { actionPreviewRule(); });
    return;
  }
  if (begin_preview()) doPreview();
}

void BrindleAppController::actionPreviewRule() {
  if (defer([this] { actionPreviewRule(); })) return;
  if (begin_preview()) doPreviewRule();
}

bool BrindleAppController::begin_preview() {
  if (files_.empty()) {
    ports_.desktop.show_tooltip(TooltipAnchor::file_list, "NOITEMSTOPREVIEW", localized("NOITEMSTOPREVIEW"));
    return false;
  }
  ports_.desktop.hide_tooltip();
  ports_.desktop.end_editing();
  // This preview shows what the live one was about to.
  ports_.main_thread.cancel_timer(quickPreviewTimer_);
  quick_preview_is_stale_ = false;
  return true;
}

void BrindleAppController::doPreview() {
  RenameSettings edited = values();
  const std::optional<Refusal> refusal = validate_and_normalise(edited);
  commit_quietly(edited);
  if (refusal) return tell_refusal(*refusal);
  state_.isRulePreview = false;
  run_preview(std::make_shared<RenamePlan>(values(), now()));
}

void BrindleAppController::doPreviewRule() {
  rules_.reset_sequences();
  state_.isRulePreview = true;
  run_preview(std::make_shared<RenamePlan>(rules_.rules(), now()));
}

void BrindleAppController::run_preview(const std::shared_ptr<RenamePlan>& plan) {
  state_.isHasFilesForRenaming = false;
  names_made_with_ = {selected_method(values()), values().generalOptionIndex, false};
  const auto result = std::make_shared<PreviewResult>();
  JobCall call;
  call.job = Job::preview;
  call.work = [this, plan, result](const JobControl& control) {
    *result = preview(files_, *plan, disk_names_, control);
  };
  call.finished = [this, plan, result] {
    state_.isHasFilesForRenaming = result->isHasFilesForRenaming;
    if (plan->resets_on_folder()) sorted_column_ = "fileLocation", sorted_ascending_ = true;
  };
  call.afterwards = [this, result] {
    if (result->error_row) return tell_operation_error(*result);
    if (result->result) ports_.desktop.focus_list();
  };
  start_job(std::move(call));
}

void BrindleAppController::tell_refusal(const Refusal& refusal) {
  show_alert(ports_, refusal.title, refusal.message);
  ports_.desktop.focus_setting(refusal.setting);
}

// The first item that failed and why; the others say so in their rows.
void BrindleAppController::tell_operation_error(const PreviewResult& result) {
  Alert alert;
  alert.message_key = "UNABLETOGENERATENEWFILENAMEERROR";
  alert.title = getAppTitle();
  alert.message = to_utf8(result.error);
  if (result.error_row && *result.error_row < files_.size()) {
    alert.informative_text =
        in_sentence(FileSystemItem::getDisplayFilePath(decode_file_name(files_.path(*result.error_row))));
  }
  ports_.alerts.show(alert);
}

void BrindleAppController::set_new_name(std::size_t row, std::u16string_view text) {
  if (state_.isExecuting || row >= files_.size()) return;
  names_made_with_.is_live = false;
  is_list_worked_on_ = true;
  FileSystemItem item;
  files_.read_without_new_name(row, item);
  item.setNewFilename(text);
  const bool is_reserved = is_terminal(item.status());
  if (is_reserved) item.setNewFilename(ItemStatus::no_changes);
  item.set_reason(is_reserved ? is_status_text : u"");
  disk_names_.begin_run(files_.folders());
  disk_names_.enter(files_[row].folder, 1);
  files_.write(row, item, disk_names_.name_limit());
  if (!disk_names_.exists(files_[row].name())) {
    files_.set_status(row, not_found(files_[row].type()));
    files_.set_reason(row, {});
  } else if (files_[row].status == ItemStatus::none) {
    files_.set_status(row, ItemStatus::no_changes);
  } else if (files_[row].status == ItemStatus::proposed) {
    check_new_name(files_, row, disk_names_);
  }
  state_.isHasFilesForRenaming = files_.renameable_count() > 0;
  update_state();
  tell(Changed::names | Changed::state);
}

}  // namespace brindle
