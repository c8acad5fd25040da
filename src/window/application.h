#pragma once

// The window's program: the ports, the controller, the window and the drop hub, made and ended in the right order. Main
// thread; a QApplication must be there.

#include <memory>
#include <string>
#include <vector>

#include "app/brindle_app_controller.h"
#include "window/desktop.h"
#include "window/dialogs.h"
#include "window/main_thread.h"

namespace brindle {

class DropHub;
class MainWindow;
class TerminationRequests;

class Application {
 public:
  Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;
  ~Application();

  /// Sets the controller up and shows the window. False when the program cannot run; that has been told.
  bool start();
  /// Opens paths (bytes, absolute) that were handed over; none brings the window to the front.
  void open(std::vector<std::string> paths);

  BrindleAppController& controller() { return controller_; }
  MainWindow& window() { return *window_; }

 private:
  void share_panel_memory();

  QtMainThread main_thread_;
  QtWorker worker_{main_thread_};
  QtAlerts alerts_;
  QtChooser chooser_;
  QtDesktop desktop_;
  BrindleAppController controller_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<DropHub> hub_;
  std::unique_ptr<TerminationRequests> termination_;
};

}  // namespace brindle
