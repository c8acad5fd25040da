#pragma once

// The main window: methods and their options above the list, the rules beside them, the commands around. Main thread.

#include <QMainWindow>
#include <cstdint>

#include "app/brindle_app_controller.h"
#include "app/window_model.h"
#include "window/desktop.h"
#include "window/window_memory.h"

class QDockWidget;

namespace brindle {

class Commands;
class ListPanel;
class MethodArea;

class MainWindow final : public QMainWindow, public WindowAccess {
 public:
  /// `app` outlives the window.
  explicit MainWindow(BrindleAppController& app);
  ~MainWindow() override;

  /// Closes without a question: work that goes on is cancelled first. For the end of the desktop's session.
  void close_now();
  /// Puts the window's looks and the session into the user defaults.
  bool save_session();

  const Commands& commands() const { return *commands_; }

  // WindowAccess
  QWidget* tooltip_anchor(TooltipAnchor anchor) override;
  void end_editing() override;
  void focus_setting(std::string_view key) override;
  void focus_list() override;
  void bring_to_front() override;
  void show_help(std::string_view page) override;
  std::optional<std::u16string> ask_custom_tag() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void make_centre();
  void make_drawer();
  void restore_or_arrange();
  void show_change(ChangedSet changed);
  bool may_stop_work();
  WindowParts parts();

  BrindleAppController& app_;
  class QSplitter* rows_ = nullptr;
  MethodArea* methods_ = nullptr;
  ListPanel* list_ = nullptr;
  QDockWidget* drawer_ = nullptr;
  Commands* commands_ = nullptr;
  bool closes_when_idle_ = false;
  std::uint32_t observer_ = 0;
};

}  // namespace brindle
