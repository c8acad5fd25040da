// Filling the list from a list file.

#include <exception>
#include <utility>

#include "app/list_controller.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "run/second_look.h"
#include "texts/list_titles.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

// On the job's thread.
Result<FileRenameItem> read_list(const std::string& path, bool folders, const ListTitles& titles) {
  try {
    return loadRenameFile(path, folders ? 1 : 0, titles);
  } catch (const std::exception& failure) {
    log_failure("browseRenameFile", failure.what());
    return Status(failure.what());
  }
}

}  // namespace

void ListController::browseRenameFile() {
  jobs_.command([this] {
    desktop().end_editing();
    OpenRequest request;
    request.title = localized("CHOOSETABDELIMITEDTEXTFILE");
    request.extensions = {"txt"};
    const std::vector<std::string> paths = model_.ports().chooser.choose(request);
    model_.settings().commit([&paths](RenameSettings& settings) {
      settings.renameFile = paths.empty() ? Text() : Text(decode_file_name(paths.front()));
    });
  });
}

// Reads the file as one job, asks whether the list may go, and fills it as another.
void ListController::loadRenameFile(bool folders) {
  jobs_.command([this, folders] {
    desktop().end_editing();
    const auto list = std::make_shared<Result<FileRenameItem>>(Status());
    std::string path;
    const bool has_path = encode_path(values().renameFile.value_or(u""), path);
    JobCall call;
    call.job = Job::loading;
    call.work = [list, path, has_path, folders, titles = list_titles()](const JobControl&) {
      if (has_path) *list = read_list(path, folders, titles);
    };
    call.afterwards = [this, list] { list_read(std::move(*list)); };
    jobs_.run_job(std::move(call));
  });
}

void ListController::list_read(Result<FileRenameItem> list) {
  if (list.ok() && !list->paths.empty()) return import_list(std::make_shared<FileRenameItem>(*std::move(list)));
  model_.settings().commit([](RenameSettings& settings) { settings.renameFile.reset(); });
  const std::string_view key = list.ok() ? "RENAMEFROMFILEMESSAGE" : "UNABLETOOPENFILE";
  show_alert(model_.ports(), make_alert("RENAMEFROMFILETITLE", key), AlertStyle::critical, list.reason());
}

void ListController::import_list(const std::shared_ptr<FileRenameItem>& item) {
  clear_list(Asks::always);
  // Behind the question a load may have begun; and whoever keeps a list of the other kind has said no to this one.
  if (model_.state().isExecuting) return jobs_.request([this, item] { import_list(item); });
  const bool folders = item->importType != 0;
  if (model_.files().empty() || folders == values().isFolders) fill_list(item);
}

void ListController::fill_list(const std::shared_ptr<FileRenameItem>& item) {
  const bool folders = item->importType != 0;
  switch_mode(folders, Asks::always);
  model_.names_made_with = {Method::from_list, values().generalOptionIndex, false, model_.choices().permute};
  model_.state().isRulePreview = false;
  const auto result = std::make_shared<ImportResult>();
  JobCall call;
  call.job = Job::loading;
  call.work = [this, item, result](const JobControl& control) {
    FileList& files = model_.files();
    *result = importFiles(files, *item, model_.include_hidden(), model_.disk_names(), control);
    result->isHasFilesForRenaming = look_again(files, model_.choices(), &model_.disk_names(), false).promised > 0;
  };
  call.finished = [this, result, folders] {
    model_.state().isHasFilesForRenaming = result->isHasFilesForRenaming;
    model_.state().count_label =
        localized_format(folders ? "TOTALFOLDERSFOUND" : "TOTALFILESFOUND", result->searchFilesCount);
    model_.sorting().column.clear();
  };
  call.afterwards = [this, result, odd_lines = item->odd_lines] {
    if (result->searchFilesCount > 0) desktop().focus_list();
    if (odd_lines == 0) return;
    constexpr std::string_view key = "LISTODDLINES";
    desktop().show_tooltip(TooltipAnchor::file_list, key, localized_format(key, odd_lines));
  };
  jobs_.run_job(std::move(call));
}

}  // namespace brindle
