// Renaming from a list, and what the export needs.

#include <exception>
#include <utility>

#include "app/brindle_app_controller.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "texts/list_titles.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

using ReadList = Result<FileRenameItem>;

void tell_list_error(const Ports& ports, const ReadList& list) {
  Alert alert;
  alert.title_key = "RENAMEFROMFILETITLE";
  alert.message_key = list.ok() ? "RENAMEFROMFILEMESSAGE" : "UNABLETOOPENFILE";
  alert.title = localized(alert.title_key);
  alert.message = localized(alert.message_key);
  alert.informative_text = list.reason();
  alert.style = AlertStyle::critical;
  ports.alerts.show(alert);
}

}  // namespace

void BrindleAppController::browseRenameFile() {
  if (defer([this] { browseRenameFile(); })) return;
  ports_.desktop.end_editing();
  OpenRequest request;
  request.title = localized("CHOOSETABDELIMITEDTEXTFILE");
  request.extensions = {"txt"};
  const std::vector<std::string> paths = ports_.chooser.choose(request);
  settings_.commit([&paths](RenameSettings& settings) {
    settings.renameFile = paths.empty() ? Text() : Text(decode_file_name(paths.front()));
  });
}

void BrindleAppController::drop_rename_file() {
  settings_.commit([](RenameSettings& settings) { settings.renameFile.reset(); });
}

// Reads the file as one job, asks whether the list may go, and fills it as another.
void BrindleAppController::loadRenameFile(bool folders) {
  if (defer([this, folders] { loadRenameFile(folders); })) return;
  ports_.desktop.end_editing();
  const auto list = std::make_shared<ReadList>(Status());
  std::string path;
  const bool has_path = encode_path(values().renameFile.value_or(u""), path);
  JobCall call;
  call.job = Job::loading;
  call.work = [list, path, has_path, folders, titles = list_titles()](const JobControl&) {
    if (!has_path) return;
    try {
      *list = brindle::loadRenameFile(path, folders ? 1 : 0, titles);
    } catch (const std::exception& failure) {
      log_failure("browseRenameFile", failure.what());
      *list = Status(failure.what());
    }
  };
  call.afterwards = [this, list] {
    if (!list->ok() || (*list)->paths.empty()) {
      drop_rename_file();
      return tell_list_error(ports_, *list);
    }
    import_list(std::make_shared<FileRenameItem>(*std::move(*list)));
  };
  start_job(std::move(call));
}

void BrindleAppController::import_list(const std::shared_ptr<FileRenameItem>& item) {
  const bool folders = item->importType != 0;
  clear_list(Asks::always);
  // Behind the question a load may have begun; and whoever keeps a list of the other kind has said no to this one.
  if (put_off([this, item] { import_list(item); })) return;
  if (!files_.empty() && folders != values().isFolders) return;
  switch_mode(folders, Asks::always);
  names_made_with_ = {Method::from_list, values().generalOptionIndex, false};
  state_.isRulePreview = false;
  const auto result = std::make_shared<ImportResult>();
  JobCall call;
  call.job = Job::loading;
  call.work = [this, item, result](const JobControl& control) {
    *result = importFiles(files_, *item, include_hidden_, disk_names_, control);
  };
  call.finished = [this, result, folders] {
    state_.isHasFilesForRenaming = result->isHasFilesForRenaming;
    state_.count_label = localized_format(folders ? "TOTALFOLDERSFOUND" : "TOTALFILESFOUND", result->searchFilesCount);
    sorted_column_.clear();
  };
  call.afterwards = [this, result, odd_lines = item->odd_lines] {
    if (result->searchFilesCount > 0) ports_.desktop.focus_list();
    if (odd_lines == 0) return;
    constexpr std::string_view key = "LISTODDLINES";
    ports_.desktop.show_tooltip(TooltipAnchor::file_list, key, localized_format(key, odd_lines));
  };
  start_job(std::move(call));
}

bool BrindleAppController::showExport() {
  if (state_.isExecuting) return false;
  if (files_.empty()) {
    ports_.desktop.show_tooltip(TooltipAnchor::export_button, "NOITEMSTOEXPORT", localized("NOITEMSTOEXPORT"));
    return false;
  }
  ports_.desktop.hide_tooltip();
  return true;
}

}  // namespace brindle
