#include "app/list_controller.h"

#include <exception>
#include <utility>

#include "platform/file_name.h"
#include "platform/message_log.h"
#include "run/rename_row.h"
#include "settings/settings_record.h"
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

}  // namespace

void ListController::choose_and_add(std::string_view title_key, bool files, bool folders) {
  OpenRequest request;
  request.title = localized(title_key);
  request.files = files;
  request.folders = folders;
  request.multiple = true;
  add_files(model_.ports().chooser.choose(request));
}

void ListController::addFilesAction() {
  jobs_.command([this] { choose_and_add("CHOOSEFILESTITLE", values().isFiles, values().isIncludeSubFolders); });
}

void ListController::addFolderAction() {
  jobs_.command([this] {
    OpenRequest request;
    request.title = localized("CHOOSEFOLDERSTITLE");
    request.files = false;
    request.folders = request.multiple = true;
    std::vector<std::string> paths = model_.ports().chooser.choose(request);
    if (paths.empty()) return;
    model_.recent().addRecentItem(paths, model_.now());
    model_.tell(Changed::recent_items);
    add_files(std::move(paths));
  });
}

void ListController::addFilesFolders() {
  jobs_.command([this] {
    const bool folders = values().isIncludeSubFolders || values().isFolders;
    choose_and_add("CHOOSEFILESORFOLDERSTITLE", values().isFiles, folders);
  });
}

void ListController::acceptDrop(std::vector<std::string> paths) {
  add_files(std::move(paths));
}

void ListController::PasteboardItemsControllerDidFinish(bool folders, bool isProcessSubfolders,
                                                        const std::vector<std::string>& paths) {
  jobs_.request([=, this] {
    switch_mode(folders, Asks::always);
    setIncludeSubFolders(isProcessSubfolders);
    add_files(paths);
  });
}

void ListController::recentFolderChanged(std::size_t entry) {
  if (entry == 0) return;
  jobs_.command([this, entry] {
    if (entry > model_.recentItems().size() || !clear_list(Asks::when_worked_on)) return;
    const std::optional<std::string> path = model_.recent().choose(entry - 1, model_.now());
    if (!path) return;
    model_.tell(Changed::recent_items);
    setIncludeSubFolders(true);
    add_files({*path});
  });
}

void ListController::addFilesFoldersFromFinder() {
  desktop().hide_tooltip();
  desktop().end_editing();
  std::vector<std::string> paths = desktop().files_on_clipboard();
  if (!paths.empty()) loadFiles(std::move(paths));
}

void ListController::loadFiles(std::vector<std::string> paths) {
  jobs_.request([this, paths = std::move(paths)] {
    try {
      switch_mode(false, Asks::always);
      add_files(paths);
    } catch (const std::exception& failure) {
      log_failure("loadFiles", failure.what());
    }
  });
}

// Where every way in ends.
void ListController::add_files(std::vector<std::string> paths) {
  if (paths.empty()) return;
  jobs_.request([this, paths = std::move(paths)] {
    desktop().hide_tooltip();
    desktop().end_editing();
    const GatherOptions options{values().isFolders, values().isIncludeSubFolders, model_.include_hidden(),
                                selected_method(values()) == Method::from_list};
    const auto result = std::make_shared<GatherResult>();
    JobCall call;
    call.job = Job::loading;
    call.work = [this, options, result, paths](const JobControl& control) {
      *result = addFiles(model_.files(), paths, options, &model_.disk_names(), control);
    };
    call.finished = [this, result, folders = options.isFolders] { show_loaded(*result, folders); };
    call.afterwards = [this, result] {
      if (result->searchFilesCount > 0) desktop().focus_list();
    };
    jobs_.run_job(std::move(call));
  });
}

void ListController::show_loaded(const GatherResult& result, bool folders) {
  model_.state().isHasFilesForRenaming = false;
  model_.state().count_label =
      localized_format(folders ? "TOTALFOLDERSFOUND" : "TOTALFILESFOUND", result.searchFilesCount);
  if (result.searchFilesCount > 0) model_.sorting().column.clear();
  show_unreadable(result.unreadable);
}

void ListController::show_unreadable(const std::vector<UnreadablePath>& paths) {
  model_.state().unreadable_label = paths.empty() ? "" : localized_format("UNREADABLEPATHS", paths.size());
  model_.state().unreadable_list = list_of_unreadable(model_.files().folders(), paths);
}

void ListController::RemoveFiles(const RowSet& rows) {
  jobs_.command([this, rows] {
    if (rows.empty()) {
      desktop().show_tooltip(TooltipAnchor::remove_button, "NOITEMSTOREMOVE", localized("NOITEMSTOREMOVE"));
      return;
    }
    desktop().hide_tooltip();
    model_.is_list_worked_on = true;
    JobCall call;
    call.job = Job::removing;
    call.work = [this, rows](const JobControl&) {
      model_.files().remove_rows(rows);
      model_.files().resetFilesDic();
    };
    call.finished = [this] {
      if (model_.files().empty()) model_.sorting().column.clear();
      model_.count_list();
    };
    call.afterwards = [this] { desktop().focus_list(); };
    jobs_.run(std::move(call), model_.files().size() > most_rows_removed_at_once);
  });
}

void ListController::clearFilesFolders() {
  jobs_.command([this] { clear_list(Asks::always); });
}

// No while a job has the list, which may have begun behind the question.
bool ListController::may_empty_list(Asks asks) {
  if (model_.state().isExecuting) return false;
  if (model_.files().empty() || (asks == Asks::when_worked_on && !model_.is_list_worked_on)) return true;
  return model_.ask_about_list(make_alert("", clear_question)) && !model_.state().isExecuting;
}

bool ListController::clear_list(Asks asks) {
  if (!may_empty_list(asks)) return false;
  empty_list();
  return true;
}

void ListController::empty_list() {
  show_unreadable({});
  model_.state().lastActionTimeTaken.clear();
  disposal_.throw_away(std::pair(model_.files().release(), std::exchange(model_.disk_names(), DiskNames())));
  model_.photo_fields().clear();
  model_.sorting().column.clear();
  model_.is_list_worked_on = false;
  model_.count_list();
  model_.tell(Changed::rows | Changed::names | Changed::state);
}

void ListController::filesFoldersOptionChanged(bool folders) {
  if (folders == values().isFolders) return;
  jobs_.command([this, folders] {
    if (folders == values().isFolders) return;
    if (switch_mode(folders, Asks::when_worked_on) && folders) setIncludeSubFolders(true);
  });
}

bool ListController::switch_mode(bool folders, Asks asks) {
  if (folders == values().isFolders) return true;
  if (!may_empty_list(asks)) return folders == values().isFolders;
  model_.settings().commit([folders](RenameSettings& settings) { set_mode(settings, folders); });
  empty_list();
  return true;
}

void ListController::setIncludeSubFolders(bool include) {
  model_.settings().commit([include](RenameSettings& settings) { settings.isIncludeSubFolders = include; });
}

bool ListController::showExport() {
  if (model_.state().isExecuting) return false;
  if (model_.files().empty()) {
    desktop().show_tooltip(TooltipAnchor::export_button, "NOITEMSTOEXPORT", localized("NOITEMSTOEXPORT"));
    return false;
  }
  desktop().hide_tooltip();
  return true;
}

}  // namespace brindle
