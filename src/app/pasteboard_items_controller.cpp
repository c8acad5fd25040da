#include "app/pasteboard_items_controller.h"

#include <utility>

namespace brindle {

PasteboardItemsController::PasteboardItemsController(BrindleAppController& app, std::vector<std::string> paths)
    : SheetController(app), Files_(std::move(paths)) {}

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
  app().PasteboardItemsControllerDidFinish(isFolders_, isProcessSubfolders_, Files_);
  close();
}

}  // namespace brindle
