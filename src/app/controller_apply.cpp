// Renaming.

#include <utility>

#include "app/brindle_app_controller.h"
#include "platform/data_folders.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "run/recovery.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::string_view title_key(bool folders) {
  return folders ? "ITEMRENAMINGTITLEFOLDERS" : "ITEMRENAMINGTITLEFILES";
}

Alert apply_alert(bool folders, std::string_view message_key, const std::string& reason) {
  Alert alert;
  alert.title_key = title_key(folders);
  alert.message_key = message_key;
  alert.title = localized(alert.title_key);
  alert.message = localized(message_key);
  alert.informative_text = reason;
  return alert;
}

}  // namespace

void BrindleAppController::actionApply() {
  if (!state_.rename_enabled) return;
  // What is shown is what is renamed: no preview comes between the question and its answer.
  ports_.main_thread.cancel_timer(quickPreviewTimer_);
  const bool folders = values().isFolders;
  is_asking_ = true;
  Alert question = apply_alert(folders, folders ? "ITEMRENAMINGMESSAGEFOLDERS" : "ITEMRENAMINGMESSAGEFILES",
                               localized_format("RENAMEABLECOUNT", files_.renameable_count()));
  question.buttons = {"YES", "NO"};
  const bool yes = ports_.alerts.show(question) == 0;
  is_asking_ = false;
  if (!yes) return;
  // The list may have changed while the question stood.
  if (!state_.rename_enabled) return;
  ApplyOptions options;
  options.isFolders = folders;
  options.isIncludeSubFolders = values().isIncludeSubFolders;
  options.method = names_made_with_.method;
  options.generalOptionIndex = names_made_with_.generalOptionIndex;
  options.is_chain = state_.isRulePreview;
  options.log_folder = preferences_.defaultLogFolderPath;
  if (options.log_folder == default_preferences().defaultLogFolderPath) {
    // That it cannot be made is told by the log that cannot be.
    static_cast<void>(createApplicationUsersFolder("Logs"));
  }
  names_made_with_.is_live = false;
  apply_names(options);
}

void BrindleAppController::apply_names(const ApplyOptions& options) {
  state_.isHasFilesForRenaming = false;
  const auto result = std::make_shared<ApplyResult>();
  const auto is_done = std::make_shared<bool>(false);
  JobCall call;
  call.job = Job::rename;
  call.work = [this, options, result, is_done](const JobControl& control) {
    *result = applyRenames(files_, options, control);
    *is_done = true;
  };
  call.finished = [this, options, result, is_done] {
    // A run that was broken off has its journal; the log is made of it at once.
    if (!*is_done && !options.without_log) recover(options.log_folder);
    show_apply(*result, options);
  };
  call.afterwards = [this, options, result] { after_apply(*result, options); };
  start_job(std::move(call));
}

void BrindleAppController::show_apply(const ApplyResult& result, const ApplyOptions& options) {
  state_.isHasFilesForRenaming = result.isHasFilesForRenaming || result.log_failed;
  state_.count_label =
      localized_format(options.isFolders ? "TOTALNOSFOLDERSRENAMED" : "TOTALNOSFILESRENAMED", result.renamed);
  if (goes_in_location_order(options)) sorted_column_ = "fileLocation", sorted_ascending_ = true;
}

void BrindleAppController::after_apply(const ApplyResult& result, ApplyOptions options) {
  ports_.desktop.focus_list();
  if (result.error.empty()) return tell_failures(result, options);
  if (!result.log_failed) {
    // The journal stays, and the next start makes a log of it.
    Alert alert = apply_alert(options.isFolders, "LOGSAVEFAILED", result.error);
    ports_.alerts.show(alert);
    return;
  }
  log_failure("createLogFile", "Could not write document out");
  Alert alert = apply_alert(options.isFolders, "LOGCREATEFAILED", result.error);
  alert.buttons = {"CONTINUE", "ABORT"};
  is_asking_ = true;
  const bool goes_on = ports_.alerts.show(alert) == 0;
  is_asking_ = false;
  if (!goes_on || !state_.rename_enabled) return;
  options.without_log = true;
  apply_names(options);
}

// In a list of a hundred thousand the few rows that kept their names are not seen.
void BrindleAppController::tell_failures(const ApplyResult& result, const ApplyOptions& options) {
  if (!result.first_failed || *result.first_failed >= files_.size()) return;
  const std::size_t row = *result.first_failed;
  std::string reason = localized(files_.reason(row));
  if (reason.empty()) reason = localized(to_utf8(status_text(files_[row].status)));
  const std::string path = in_sentence(FileSystemItem::getDisplayFilePath(decode_file_name(files_.path(row))));
  Alert alert = apply_alert(options.isFolders, "ITEMSNOTRENAMED", "“" + path + "”: " + reason);
  alert.message = localized_format("ITEMSNOTRENAMED", result.attempted - result.renamed);
  ports_.alerts.show(alert);
}

void BrindleAppController::show_undone(std::size_t restored) {
  state_.isHasFilesForRenaming = state_.isHasFilesForRenaming && files_.renameable_count() > 0;
  state_.count_label = localized_format("ITEMSRESTORED", restored);
}

}  // namespace brindle
