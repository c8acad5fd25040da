#include "app/sheet_controller.h"

#include <utility>

namespace brindle {

SheetController::SheetController(BrindleAppController& app) : model_(app.model()), jobs_(app.jobs()) {
  observer_ = model_.add_observer([this](ChangedSet what) {
    if (has(what, Changed::state)) tell();
  });
}

SheetController::~SheetController() {
  model_.remove_observer(observer_);
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
  if (!model_.state().is_busy()) return true;
  ports().desktop.beep();
  return false;
}

void SheetController::when_idle(std::function<void()> begin) {
  if (!can_begin()) return;
  const auto begin_here = [this, begin = std::move(begin), alive = std::weak_ptr(alive_)] {
    if (alive.lock() && !is_closed_) begin();
  };
  jobs_.command(begin_here, JobsController::BrokenOff::left);
}

}  // namespace brindle
