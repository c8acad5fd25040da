#include "app/pasteboard_items_controller.h"

#include <string_view>
#include <unordered_set>
#include <utility>

#include "app/list_controller.h"

namespace brindle {

PasteboardItemsController::PasteboardItemsController(BrindleAppController& app, std::vector<std::string> paths)
    : SheetController(app), list_(app.list()), Files_(std::move(paths)) {}

void PasteboardItemsController::add_files(const std::vector<std::string>& paths) {
  std::unordered_set<std::string_view> known(Files_.begin(), Files_.end());
  std::vector<std::string> added;
  for (const std::string& path : paths) {
    if (known.insert(path).second) added.push_back(path);
  }
  Files_.insert(Files_.end(), added.begin(), added.end());
  tell();
}

void PasteboardItemsController::filesFoldersOptionChanged(bool folders) {
  isFolders_ = folders;
  tell();
}

void PasteboardItemsController::setProcessSubfolders(bool process) {
  isProcessSubfolders_ = process;
  tell();
}

void PasteboardItemsController::apply() {
  if (!can_begin()) return;
  list_.PasteboardItemsControllerDidFinish(isFolders_, isProcessSubfolders_, Files_);
  close();
}

}  // namespace brindle
