#include "app/renaming_controller.h"

#include <memory>
#include <utility>

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

}  // namespace

void RenamingController::actionApply() {
  if (!model_.state().rename_enabled) return;
  // What is shown is what is renamed: no preview comes between the question and its answer.
  preview_.cancel_pending();
  const bool folders = model_.values().isFolders;
  Alert question = make_alert(title_key(folders), folders ? "ITEMRENAMINGMESSAGEFOLDERS" : "ITEMRENAMINGMESSAGEFILES");
  question.informative_text = localized_format("RENAMEABLECOUNT", model_.files().renameable_count());
  // The list may have changed while the question stood.
  if (!model_.ask_about_list(std::move(question)) || !model_.state().rename_enabled) return;
  ApplyOptions chosen = options();
  chosen.isFolders = folders;
  model_.names_made_with.is_live = false;
  apply_names(chosen);
}

ApplyOptions RenamingController::options() const {
  ApplyOptions options;
  options.isIncludeSubFolders = model_.values().isIncludeSubFolders;
  options.method = model_.names_made_with.method;
  options.generalOptionIndex = model_.names_made_with.generalOptionIndex;
  options.is_chain = model_.state().isRulePreview;
  options.permute = model_.names_made_with.permute;
  options.log_folder = model_.preferences().defaultLogFolderPath;
  if (options.log_folder == default_preferences().defaultLogFolderPath) {
    // That it cannot be made is told by the log that cannot be.
    static_cast<void>(createApplicationUsersFolder("Logs"));
  }
  return options;
}

void RenamingController::apply_names(const ApplyOptions& options) {
  model_.state().isHasFilesForRenaming = false;
  const auto result = std::make_shared<ApplyResult>();
  const auto is_done = std::make_shared<bool>(false);
  JobCall call;
  call.job = Job::rename;
  call.work = [this, options, result, is_done](const JobControl& control) {
    *result = applyRenames(model_.files(), options, control);
    *is_done = true;
  };
  call.finished = [this, options, result, is_done] {
    // A run that was broken off has its journal; the log is made of it at once.
    if (!*is_done && !options.without_log) recover(options.log_folder);
    show_apply(*result, options);
  };
  call.afterwards = [this, options, result] { after_apply(*result, options); };
  jobs_.run_job(std::move(call));
}

void RenamingController::show_apply(const ApplyResult& result, const ApplyOptions& options) {
  model_.state().isHasFilesForRenaming = result.isHasFilesForRenaming || result.log_failed;
  model_.state().count_label =
      localized_format(options.isFolders ? "TOTALNOSFOLDERSRENAMED" : "TOTALNOSFILESRENAMED", result.renamed);
  if (goes_in_location_order(options)) model_.sorting() = {"fileLocation", true};
}

void RenamingController::after_apply(const ApplyResult& result, ApplyOptions options) {
  model_.ports().desktop.focus_list();
  if (result.error.empty()) return tell_failures(result, options);
  Alert alert = make_alert(title_key(options.isFolders), result.log_failed ? "LOGCREATEFAILED" : "LOGSAVEFAILED");
  // The journal stays, and the next start makes a log of it.
  if (!result.log_failed) return show_alert(model_.ports(), std::move(alert), AlertStyle::warning, result.error);
  log_failure("createLogFile", "Could not write document out");
  alert.informative_text = result.error;
  if (!model_.ask_about_list(std::move(alert), "CONTINUE", "ABORT") || !model_.state().rename_enabled) return;
  options.without_log = true;
  apply_names(options);
}

// In a list of a hundred thousand the few rows that kept their names are not seen.
void RenamingController::tell_failures(const ApplyResult& result, const ApplyOptions& options) {
  const FileList& files = model_.files();
  if (!result.first_failed || *result.first_failed >= files.size()) return;
  const std::size_t row = *result.first_failed;
  std::string reason = reason_in_words(files.reason(row));
  if (reason.empty()) reason = localized(to_utf8(status_text(files[row].status)));
  const std::string path = in_sentence(FileSystemItem::getDisplayFilePath(decode_file_name(files.path(row))));
  show_alert(model_.ports(),
             make_alert(title_key(options.isFolders), "ITEMSNOTRENAMED", result.attempted - result.renamed),
             AlertStyle::warning, localized_format("ITEMANDREASON", path, reason));
}

void RenamingController::show_undone(std::size_t restored) {
  WindowState& state = model_.state();
  state.isHasFilesForRenaming = state.isHasFilesForRenaming && model_.files().renameable_count() > 0;
  state.count_label = localized_format("ITEMSRESTORED", restored);
}

}  // namespace brindle
