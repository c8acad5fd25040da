#pragma once

// One window over a real controller, with folders of its own; questions and panels are answered by the test.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/scripted_ports.h"
#include "support/temp_tree.h"
#include "texts/string_table.h"
#include "window/desktop.h"
#include "window/file_table_view.h"
#include "window/main_thread.h"
#include "window/main_window.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle::test {

class WindowTest : public testing::Test {
 protected:
  WindowTest() {
    for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
      ::setenv(name, (home / name).c_str(), 1);
    open();
  }
  ~WindowTest() override {
    close();
    set_language(languages().front());
    use_palette(false);
  }

  void open() {
    controller = std::make_unique<BrindleAppController>(Ports{alerts, chooser, main_thread, worker, desktop});
    ASSERT_TRUE(controller->awakeFromNib());
    window = std::make_unique<MainWindow>(*controller);
    desktop.set_window(window.get());
    window->resize(1024, 700);
    window->show();
    controller->applicationDidFinishLaunching();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  void close() {
    wait_until_idle();
    desktop.set_window(nullptr);
    window.reset();
    controller.reset();
  }

  template <class Widget = QWidget>
  Widget* find(const char* name) const {
    auto* widget = window->findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  FileTableView& table() const { return *find<FileTableView>("fileTable"); }
  QString cell(int row, int column) const { return table().model()->index(row, column).data().toString(); }
  QStringList column_texts(int column) const {
    QStringList texts;
    for (int row = 0; row < table().model()->rowCount(); ++row) texts << cell(row, column);
    return texts;
  }

  void wait_until_idle() const {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !controller->state().isExecuting; }));
    QApplication::processEvents();
  }
  void trigger(const char* command) const {
    auto* action = find<QAction>(command);
    EXPECT_TRUE(action->isEnabled()) << command;
    action->trigger();
    wait_until_idle();
  }
  static void drop(QWidget* target, const std::vector<std::string>& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& path : paths)
      urls << QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"));
    data.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &event);
    EXPECT_TRUE(event.isAccepted());
  }
  void drop_on_list(const std::vector<std::string>& paths) {
    drop(find("listPanel"), paths);
    QApplication::processEvents();
    wait_until_idle();
  }

  /// Shows a sheet and works on it; closes it when that did not.
  template <class Show>
  void with_sheet(Show show, const std::function<void()>& act) {
    bool shown = false;
    QTimer::singleShot(0, window.get(), [&] {
      sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(sheet, nullptr);
      shown = true;
      // A dialog counts as active already when its window's parent is.
      ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == sheet; }));
      act();
      if (QApplication::activeModalWidget() == sheet) sheet->reject();
    });
    show();
    EXPECT_TRUE(shown);
    sheet = nullptr;
  }

  /// Keeps a picture, when pictures are wanted.
  void picture(const char* name) const { picture(name, *window); }
  static void picture(const char* name, QWidget& of) {
    const char* folder = std::getenv("BRINDLE_TEST_PICTURES");
    if (folder == nullptr) return;
    QApplication::processEvents();
    of.grab().save(QStringLiteral("%1/%2.png").arg(QString::fromLocal8Bit(folder), QString::fromLatin1(name)));
  }

  TempTree home;
  TempTree disk;
  ScriptedAlerts alerts;
  ScriptedChooser chooser;
  QtMainThread main_thread;
  QtWorker worker{main_thread};
  QtDesktop desktop;
  std::unique_ptr<BrindleAppController> controller;
  std::unique_ptr<MainWindow> window;
  QDialog* sheet = nullptr;  ///< what with_sheet shows
};

}  // namespace brindle::test
