// Adding and removing items.

#include <exception>
#include <utility>

#include "app/brindle_app_controller.h"
#include "gather/gather.h"
#include "platform/app_info.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "run/rename_row.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

// Removing from so many rows takes some ten milliseconds; from more it is a job.
constexpr std::size_t most_rows_removed_at_once = 100'000;

// The question is its own key.
constexpr std::string_view clear_question = "Are you sure to remove all file(s)/folder(s)?";

// As many lines as a person reads.
constexpr std::size_t most_lines_of_unreadable = 30;

std::string display_path(std::string_view path) {
  return in_sentence(FileSystemItem::getDisplayFilePath(decode_file_name(path)));
}

std::string list_of_unreadable(const FolderTable& folders, const std::vector<UnreadablePath>& paths) {
  std::string list;
  for (std::size_t i = 0; i < paths.size() && i < most_lines_of_unreadable; ++i) {
    const std::string_view reason = describe_error(paths[i].error);
    list += display_path(folders.path(paths[i].path)) + ": " + localized(reason) + "\n";
  }
  if (paths.size() > most_lines_of_unreadable) list += "…\n";
  if (!list.empty()) list.pop_back();
  return list;
}

OpenRequest open_request(std::string_view title_key, bool files, bool folders) {
  OpenRequest request;
  request.title = localized(title_key);
  request.files = files;
  request.folders = folders;
  request.multiple = true;
  return request;
}

}  // namespace

void BrindleAppController::addFilesAction() {
  if (defer([this] { addFilesAction(); })) return;
  add_files(ports_.chooser.choose(open_request("CHOOSEFILESTITLE", values().isFiles, values().isIncludeSubFolders)));
}

void BrindleAppController::addFolderAction() {
  if (defer([this] { addFolderAction(); })) return;
  std::vector<std::string> paths = ports_.chooser.choose(open_request("CHOOSEFOLDERSTITLE", false, true));
  if (paths.empty()) return;
  recent_.addRecentItem(paths, now());
  tell(Changed::recent_items);
  add_files(std::move(paths));
}

void BrindleAppController::addFilesFolders() {
  if (defer([this] { addFilesFolders(); })) return;
  add_files(ports_.chooser.choose(
      open_request("CHOOSEFILESORFOLDERSTITLE", values().isFiles, values().isIncludeSubFolders || values().isFolders)));
}

void BrindleAppController::acceptDrop(std::vector<std::string> paths) {
  add_files(std::move(paths));
}

void BrindleAppController::PasteboardItemsControllerDidFinish(bool folders, bool isProcessSubfolders,
                                                              std::vector<std::string> paths) {
  if (put_off([=, this] { PasteboardItemsControllerDidFinish(folders, isProcessSubfolders, paths); })) return;
  switch_mode(folders, Asks::always);
  setIncludeSubFolders(isProcessSubfolders);
  add_files(std::move(paths));
}

void BrindleAppController::recentFolderChanged(std::size_t entry) {
  if (entry == 0 || defer([this, entry] { recentFolderChanged(entry); })) return;
  if (entry > recent_.items().size() || !clear_list(Asks::when_worked_on)) return;
  const std::optional<std::string> path = recent_.choose(entry - 1, now());
  if (!path) return;
  tell(Changed::recent_items);
  setIncludeSubFolders(true);
  add_files({*path});
}

void BrindleAppController::addFilesFoldersFromFinder() {
  ports_.desktop.hide_tooltip();
  ports_.desktop.end_editing();
  std::vector<std::string> paths = ports_.desktop.files_on_clipboard();
  if (!paths.empty()) loadFiles(std::move(paths));
}

void BrindleAppController::loadFiles(std::vector<std::string> paths) {
  if (put_off([this, paths] { loadFiles(paths); })) return;
  try {
    switch_mode(false, Asks::always);
    add_files(std::move(paths));
  } catch (const std::exception& failure) {
    log_failure("loadFiles", failure.what());
  }
}

// The load job, where every door ends.
void BrindleAppController::add_files(std::vector<std::string> paths) {
  if (paths.empty() || put_off([this, paths] { add_files(paths); })) return;
  ports_.desktop.hide_tooltip();
  ports_.desktop.end_editing();
  const GatherOptions options{values().isFolders, values().isIncludeSubFolders, include_hidden_,
                              selected_method(values()) == Method::from_list};
  const auto result = std::make_shared<GatherResult>();
  JobCall call;
  call.job = Job::loading;
  call.work = [this, options, result, paths = std::move(paths)](const JobControl& control) {
    *result = addFiles(files_, paths, options, &disk_names_, control);
  };
  call.finished = [this, result, is_folders = options.isFolders] {
    state_.isHasFilesForRenaming = false;
    state_.count_label =
        localized_format(is_folders ? "TOTALFOLDERSFOUND" : "TOTALFILESFOUND", result->searchFilesCount);
    if (result->searchFilesCount > 0) sorted_column_.clear();
    show_unreadable(result->unreadable);
  };
  call.afterwards = [this, result] {
    if (result->searchFilesCount > 0) ports_.desktop.focus_list();
  };
  start_job(std::move(call));
}

void BrindleAppController::show_unreadable(const std::vector<UnreadablePath>& paths) {
  state_.unreadable_label = paths.empty() ? "" : localized_format("UNREADABLEPATHS", paths.size());
  state_.unreadable_list = list_of_unreadable(files_.folders(), paths);
}

void BrindleAppController::RemoveFiles(const RowSet& rows) {
  if (defer([this, rows] { RemoveFiles(rows); })) return;
  if (rows.empty()) {
    ports_.desktop.show_tooltip(TooltipAnchor::remove_button, "NOITEMSTOREMOVE", localized("NOITEMSTOREMOVE"));
    return;
  }
  ports_.desktop.hide_tooltip();
  JobCall call;
  call.job = Job::removing;
  call.work = [this, rows](const JobControl&) {
    files_.remove_rows(rows);
    files_.resetFilesDic();
  };
  is_list_worked_on_ = true;
  call.finished = [this] {
    if (files_.empty()) sorted_column_.clear();
    count_list();
  };
  call.afterwards = [this] { ports_.desktop.focus_list(); };
  if (files_.size() > most_rows_removed_at_once) return void(start_job(std::move(call)));
  call.work({});
  call.finished();
  update_state();
  tell(Changed::rows | Changed::names | Changed::state);
  call.afterwards();
}

void BrindleAppController::clearFilesFolders() {
  if (!defer([this] { clearFilesFolders(); })) clear_list(Asks::always);
}

// No while a job has the list, which may have begun behind the question.
bool BrindleAppController::may_empty_list(Asks asks) {
  if (state_.isExecuting) return false;
  if (files_.empty() || (asks == Asks::when_worked_on && !is_list_worked_on_)) return true;
  Alert alert;
  alert.message_key = clear_question;
  alert.title = getAppTitle();
  alert.message = localized(clear_question);
  alert.buttons = {"YES", "NO"};
  const bool was_asking = std::exchange(is_asking_, true);
  const bool yes = ports_.alerts.show(alert) == 0;
  is_asking_ = was_asking;
  return yes && !state_.isExecuting;
}

bool BrindleAppController::clear_list(Asks asks) {
  if (!may_empty_list(asks)) return false;
  empty_list();
  return true;
}

void BrindleAppController::empty_list() {
  show_unreadable({});
  state_.lastActionTimeTaken.clear();
  disposal_.throw_away(std::pair(files_.release(), std::exchange(disk_names_, DiskNames())));
  photo_fields_->clear();
  sorted_column_.clear();
  is_list_worked_on_ = false;
  list_was_changed();
}

void BrindleAppController::filesFoldersOptionChanged(bool folders) {
  if (folders == values().isFolders || defer([this, folders] { filesFoldersOptionChanged(folders); })) return;
  if (switch_mode(folders, Asks::when_worked_on) && folders) setIncludeSubFolders(true);
}

bool BrindleAppController::switch_mode(bool folders, Asks asks) {
  if (folders == values().isFolders) return true;
  if (!may_empty_list(asks)) return folders == values().isFolders;
  settings_.commit([folders](RenameSettings& settings) { set_mode(settings, folders); });
  empty_list();
  return true;
}

void BrindleAppController::setIncludeSubFolders(bool include) {
  settings_.commit([include](RenameSettings& settings) { settings.isIncludeSubFolders = include; });
}

void BrindleAppController::setIncludeHidden(bool include) {
  include_hidden_ = include;
  defaults_.set(user_default::include_hidden, include);
  const Status status = defaults_.flush();
  if (!status.ok()) log_failure("flush", status.reason());
  tell(Changed::preferences);
}

}  // namespace brindle
