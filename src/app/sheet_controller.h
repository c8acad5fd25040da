#pragma once

// What the sheets of the main window have in common. Main thread.

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "app/brindle_app_controller.h"
#include "app/ports.h"

namespace brindle {

/// A sheet's controller lives from opening the sheet until it has said that it is closed, and does not outlive the main
/// controller. A view must not destroy it from within an observer; it can post that.
class SheetController {
 public:
  explicit SheetController(BrindleAppController& app);
  SheetController(const SheetController&) = delete;
  SheetController& operator=(const SheetController&) = delete;
  virtual ~SheetController();

  /// Called after each change of what the sheet shows, progress of its job included.
  std::function<void()> changed;
  /// Called once, when the sheet is over and its window is to go.
  std::function<void()> closed;

  /// The Close (or Cancel) button: gives up what was not applied. False, with nothing done, while a job of the sheet
  /// runs.
  virtual bool sheetClosed();
  bool is_closed() const { return is_closed_; }

  void showHelp() const;

 protected:
  virtual std::string_view help_page() const = 0;

  BrindleAppController& app() const { return app_; }
  const Ports& ports() const { return app_.ports(); }
  void tell() const;
  void close();
  /// Whether the main controller can be given a command: false, with a beep, while a job runs that does not make way.
  bool can_begin() const;
  /// Calls `begin`, which starts a job, when none runs any more; at once, or when a quiet one has made way. Beeps while
  /// any other runs.
  void when_idle(std::function<void()> begin);

 private:
  void state_changed();

  BrindleAppController& app_;
  std::function<void()> waiting_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
  std::uint32_t observer_ = 0;
  bool is_closed_ = false;
};

}  // namespace brindle
