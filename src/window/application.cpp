#include "window/application.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QApplication>
#include <QObject>
#include <QSessionManager>
#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "app/documents_controller.h"
#include "app/window_model.h"
#include "window/drop_hub.h"
#include "window/main_window.h"
#include "window/sheets.h"
#include "window/text.h"

namespace brindle {

/// Calls `ended` from the event loop when the system asks the program to end (SIGTERM, SIGINT, SIGHUP). One object a
/// program. Main thread.
class TerminationRequests final : public QObject {
 public:
  explicit TerminationRequests(std::function<void()> ended);
  ~TerminationRequests() override;

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

namespace {

constexpr std::array signals_of_end = {SIGTERM, SIGINT, SIGHUP};

// A handler may do little more than write to a descriptor.
volatile int event_descriptor = -1;

extern "C" void end_was_requested(int /*signal*/) {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = ::write(event_descriptor, &one, sizeof one);
}

void handle_with(void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  for (const int signal : signals_of_end) ::sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationRequests::TerminationRequests(std::function<void()> ended) {
  event_descriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (event_descriptor < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(event_descriptor, QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [ended = std::move(ended)] {
    std::uint64_t count = 0;
    if (::read(event_descriptor, &count, sizeof count) > 0) ended();
  });
  handle_with(end_was_requested);
}

TerminationRequests::~TerminationRequests() {
  handle_with(SIG_DFL);
  notifier_.reset();
  if (event_descriptor >= 0) ::close(event_descriptor);
}

namespace {

// What the user defaults call the folder where the last open panel was.
constexpr std::string_view open_panel_folder = "OPENPANELFOLDER";

// Sheets may lie over the window; an alert belongs over the topmost.
QWidget* dialog_parent(QWidget* window) {
  QWidget* modal = QApplication::activeModalWidget();
  return modal ? modal : window;
}

}  // namespace

Application::Application()
    : alerts_([this] { return dialog_parent(window_.get()); }),
      chooser_([this] { return dialog_parent(window_.get()); }),
      controller_(Ports{alerts_, chooser_, main_thread_, worker_, desktop_}) {
  share_panel_memory();
}

void Application::share_panel_memory() {
  chooser_.opening = [this](OpenPanelMemory& memory) {
    memory.recent.clear();
    for (const RecentItem& item : controller_.model().recentItems()) memory.recent.push_back(item.itemPath);
    if (memory.folder.empty())
      memory.folder = path_bytes(qt_text(controller_.model().user_defaults().text(open_panel_folder, u"")));
  };
  chooser_.opened = [this](const OpenPanelMemory& memory) {
    controller_.model().user_defaults().set(open_panel_folder, utf16(path_text(memory.folder)));
  };
}

Application::~Application() {
  desktop_.set_window(nullptr);
}

bool Application::start() {
  if (!controller_.start()) return false;
  window_ = std::make_unique<MainWindow>(controller_);
  desktop_.set_window(window_.get());
  QApplication::setQuitOnLastWindowClosed(false);
  window_->show();
  controller_.restore_session();
  const auto choose = [this](std::vector<std::string> dropped) {
    window_->bring_to_front();
    // One sheet at a time: what lies over the window is answered first.
    if (QApplication::activeModalWidget() != nullptr) return QApplication::beep();
    show_choose_items_sheet(window_.get(), controller_, std::move(dropped));
  };
  hub_ = std::make_unique<DropHub>(controller_, choose);
  termination_ = std::make_unique<TerminationRequests>([this] { window_->close_now(); });
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, window_.get(), [this] { window_->save_session(); });
  // When the window is there: it is told over it, and what is handed over meanwhile is heard.
  const auto tell = [this] {
    if (controller_.tell_interrupted_runs()) show_undo_sheet(window_.get(), controller_);
  };
  QMetaObject::invokeMethod(window_.get(), tell, Qt::QueuedConnection);
  return true;
}

void Application::open(std::vector<std::string> paths) {
  window_->bring_to_front();
  if (!paths.empty()) controller_.documents().openFilesInTurn(std::move(paths));
}

}  // namespace brindle
