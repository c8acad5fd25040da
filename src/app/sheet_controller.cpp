#include "app/sheet_controller.h"

#include <utility>

namespace brindle {

SheetController::SheetController(BrindleAppController& app) : app_(app) {
  observer_ = app_.add_observer([this](ChangedSet what) {
    if (has(what, Changed::state)) state_changed();
  });
}

SheetController::~SheetController() {
  app_.remove_observer(observer_);
}

void SheetController::state_changed() {
  tell();
  if (!waiting_ || app_.state().isExecuting) return;
  ports().main_thread.post([this, begin = std::exchange(waiting_, nullptr), alive = std::weak_ptr(alive_)] {
    if (alive.lock() && !is_closed_) when_idle(begin);
  });
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
  if (!app_.state().isExecuting || app_.state().is_quiet) return true;
  ports().desktop.beep();
  return false;
}

void SheetController::when_idle(std::function<void()> begin) {
  if (!can_begin()) return;
  if (!app_.state().isExecuting) return begin();
  waiting_ = std::move(begin);
  app_.cancelProcess();
}

}  // namespace brindle
