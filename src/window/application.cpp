#include "window/application.h"

#include <QApplication>
#include <QSessionManager>
#include <utility>

#include "window/drop_hub.h"
#include "window/main_window.h"
#include "window/sheets.h"
#include "window/termination.h"
#include "window/text.h"

namespace brindle {
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
    for (const RecentItem& item : controller_.recentItems()) memory.recent.push_back(item.itemPath);
    if (memory.folder.empty())
      memory.folder = path_bytes(qt_text(controller_.user_defaults().text(open_panel_folder, u"")));
  };
  chooser_.opened = [this](const OpenPanelMemory& memory) {
    controller_.user_defaults().set(open_panel_folder, utf16(path_text(memory.folder)));
  };
}

Application::~Application() {
  desktop_.set_window(nullptr);
}

bool Application::start() {
  if (!controller_.awakeFromNib()) return false;
  window_ = std::make_unique<MainWindow>(controller_);
  desktop_.set_window(window_.get());
  QApplication::setQuitOnLastWindowClosed(false);
  window_->show();
  controller_.applicationDidFinishLaunching();
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
  if (!paths.empty()) controller_.openFilesInTurn(std::move(paths));
}

}  // namespace brindle
