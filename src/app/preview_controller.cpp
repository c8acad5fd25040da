#include "app/preview_controller.h"

#include <algorithm>
#include <utility>

#include "methods/validation.h"
#include "platform/file_name.h"
#include "run/rename_row.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {

PreviewController::~PreviewController() {
  for (const auto timer : {quickPreviewTimer_, previewRuleTimer_}) model_.ports().main_thread.cancel_timer(timer);
}

void PreviewController::actionPreview() {
  jobs_.command([this] {
    if (!rules_.isOpen() || rules_.rules().empty()) return doPreview();
    MainThreadPort& main_thread = model_.ports().main_thread;
    main_thread.cancel_timer(previewRuleTimer_);
    previewRuleTimer_ = main_thread.start_timer(std::chrono::milliseconds(500), [this] { actionPreviewRule(); });
  });
}

void PreviewController::actionPreviewRule() {
  jobs_.command([this] { doPreviewRule(); });
}

bool PreviewController::begin_preview() {
  DesktopPort& desktop = model_.ports().desktop;
  if (model_.files().empty()) {
    desktop.show_tooltip(TooltipAnchor::file_list, "NOITEMSTOPREVIEW", localized("NOITEMSTOPREVIEW"));
    return false;
  }
  desktop.hide_tooltip();
  desktop.end_editing();
  // This preview shows what the live one was about to.
  cancel_pending();
  jobs_.forget_broken_off_preview();
  return true;
}

void PreviewController::doPreview() {
  if (!begin_preview()) return;
  RenameSettings edited = values();
  const std::optional<Refusal> refusal = validate_and_normalise(edited);
  model_.commit_quietly(std::move(edited));
  if (refusal) return tell_refusal(model_.ports(), *refusal);
  model_.state().isRulePreview = false;
  run_preview(std::make_shared<RenamePlan>(values(), model_.now()));
}

void PreviewController::doPreviewRule() {
  if (!begin_preview()) return;
  rules_.reset_sequences();
  model_.state().isRulePreview = true;
  run_preview(std::make_shared<RenamePlan>(rules_.rules(), model_.now()));
}

void PreviewController::run_preview(const std::shared_ptr<RenamePlan>& plan) {
  model_.state().isHasFilesForRenaming = false;
  model_.names_made_with = {selected_method(values()), values().generalOptionIndex, false, model_.choices().permute};
  const auto result = std::make_shared<PreviewResult>();
  JobCall call;
  call.job = Job::preview;
  call.work = [this, plan, result](const JobControl& control) {
    *result = preview(model_.files(), *plan, model_.disk_names(), control, model_.choices());
  };
  call.finished = [this, plan, result] {
    model_.state().isHasFilesForRenaming = result->isHasFilesForRenaming;
    names_made(*plan);
  };
  call.afterwards = [this, result] {
    if (result->error_row) return tell_operation_error(*result);
    if (result->result) model_.ports().desktop.focus_list();
  };
  jobs_.run_job(std::move(call));
}

void PreviewController::names_made(const RenamePlan& plan) {
  if (plan.resets_on_folder()) model_.sorting() = {"fileLocation", true};
}

// The first item that failed and why; the others say so in their rows.
void PreviewController::tell_operation_error(const PreviewResult& result) {
  std::string path;
  if (result.error_row && *result.error_row < model_.files().size()) {
    const std::u16string name = decode_file_name(model_.files().path(*result.error_row));
    path = in_sentence(FileSystemItem::getDisplayFilePath(name));
  }
  show_alert(model_.ports(),
             make_alert_of("", "UNABLETOGENERATENEWFILENAMEERROR", reason_in_words(to_utf8(result.error))),
             AlertStyle::warning, path);
}

void PreviewController::set_choices(const RunChoices& choices) {
  model_.choices() = choices;
  SettingsRecord record;
  put_choices(record, choices);
  model_.user_defaults().set(user_default::run_choices, record);
  model_.save_user_defaults();
  model_.tell(Changed::preferences);
  if (model_.live_preview().isLivePreviewEnabled && model_.names_made_with.is_live) remake();
}

void PreviewController::set_new_name(std::size_t row, std::u16string_view text) {
  if (model_.state().isExecuting || row >= model_.files().size()) return;
  FileList& files = model_.files();
  DiskNames& names = model_.disk_names();
  model_.names_made_with.is_live = false;
  model_.is_list_worked_on = true;
  FileSystemItem item;
  files.read_without_new_name(row, item);
  item.setNewFilename(text);
  const bool is_reserved = is_terminal(item.status());
  if (is_reserved) item.setNewFilename(ItemStatus::no_changes);
  item.set_reason(is_reserved ? decode_file_name(status_text_reason) : std::u16string());
  names.begin_run(files.folders());
  names.enter(files[row].folder, 1);
  files.write(row, item, names.name_limit());
  if (!names.exists(files[row].name())) {
    files.set_status(row, not_found(files[row].type()));
    files.set_reason(row, {});
    files.set_problem(row, Problem::gone);
  } else if (files[row].status == ItemStatus::none) {
    files.set_status(row, ItemStatus::no_changes);
  } else if (files[row].status == ItemStatus::proposed) {
    check_new_name(files, row, names);
  }
  model_.state().isHasFilesForRenaming = files.renameable_count() > 0;
  model_.tell(Changed::names | Changed::state);
}

void tell_refusal(const Ports& ports, const Refusal& refusal) {
  show_alert(ports, make_alert(refusal.title, refusal.message));
  ports.desktop.focus_setting(refusal.setting);
}

}  // namespace brindle
