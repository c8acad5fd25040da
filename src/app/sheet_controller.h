#pragma once

// What the sheets of the main window have in common. Main thread.

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "app/brindle_app_controller.h"
#include "app/jobs_controller.h"

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

  WindowModel& model() const { return model_; }
  JobsController& jobs() const { return jobs_; }
  const Ports& ports() const { return model_.ports(); }
  void tell() const;
  void close();
  /// Whether a command would be heard: false, with a beep, while a job runs that does not make way.
  bool can_begin() const;
  /// Calls `begin`, which starts a job, at once or when a quiet one has made way. Beeps while any other runs.
  void when_idle(std::function<void()> begin);

 private:
  WindowModel& model_;
  JobsController& jobs_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
  std::uint32_t observer_ = 0;
  bool is_closed_ = false;
};

}  // namespace brindle
