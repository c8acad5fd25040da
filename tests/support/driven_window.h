#pragma once

// The real main window over the real controller and worker, for a program that drives it. Who answers its questions and
// panels is the driver's affair.

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <memory>
#include <string>
#include <vector>

#include "app/brindle_app_controller.h"
#include "app/window_model.h"
#include "window/desktop.h"
#include "window/main_thread.h"
#include "window/main_window.h"

namespace brindle::test {

class DrivenWindow {
 public:
  /// The ports outlive it.
  DrivenWindow(AlertPort& alerts, ChooserPort& chooser) : alerts_(alerts), chooser_(chooser) {}

  void open(int width, int height) {
    controller = std::make_unique<BrindleAppController>(Ports{alerts_, chooser_, main_thread, worker, desktop});
    if (!controller->start()) qFatal("no data folder");
    window = std::make_unique<MainWindow>(*controller);
    desktop.set_window(window.get());
    window->resize(width, height);
    window->show();
    controller->restore_session();
    window->activateWindow();
  }
  /// No job may be running.
  void close() {
    desktop.set_window(nullptr);
    window.reset();
    controller.reset();
  }

  bool is_idle() const { return !controller->model().state().isExecuting; }
  /// Null when there is none.
  template <class Widget>
  Widget* child(const char* name) const {
    return window->findChild<Widget*>(QString::fromLatin1(name));
  }
  /// Whether the files (paths, bytes) were taken.
  static bool drop(QWidget* target, const std::vector<std::string>& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& path : paths)
      urls << QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"));
    data.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &event);
    return enter.isAccepted() && event.isAccepted();
  }

  QtMainThread main_thread;
  QtWorker worker{main_thread};
  QtDesktop desktop;
  std::unique_ptr<BrindleAppController> controller;
  std::unique_ptr<MainWindow> window;

 private:
  AlertPort& alerts_;
  ChooserPort& chooser_;
};

}  // namespace brindle::test
