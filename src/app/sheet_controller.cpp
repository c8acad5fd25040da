#include "app/sheet_controller.h"

namespace brindle {

SheetController::SheetController(BrindleAppController& app) : app_(app) {
  observer_ = app_.add_observer([this](ChangedSet what) {
    if (has(what, Changed::state)) tell();
  });
}

SheetController::~SheetController() {
  app_.remove_observer(observer_);
}

bool SheetController::sheetClosed() {
  close();
  return true;
}

void SheetController::showHelp() const {
  ports().desktop.show_help(help_page());
}

void SheetController::tell() const {
  if (changed && !is_closed_) changed();
}

void SheetController::close() {
  if (is_closed_) return;
  is_closed_ = true;
  if (closed) closed();
}

bool SheetController::can_begin() const {
  if (!app_.state().isExecuting) return true;
  ports().desktop.beep();
  return false;
}

}  // namespace brindle
