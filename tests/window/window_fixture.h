#pragma once

// One window over a real controller, with folders of its own; questions and panels are answered by the test.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/scripted_ports.h"
#include "app/window_model.h"
#include "support/driven_window.h"
#include "support/temp_tree.h"
#include "texts/string_table.h"
#include "window/file_table_view.h"
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
    driven.open(1024, 700);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  void close() {
    wait_until_idle();
    driven.close();
  }

  template <class Widget = QWidget>
  Widget* find(const char* name) const {
    auto* widget = driven.child<Widget>(name);
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
    EXPECT_TRUE(QTest::qWaitFor([this] { return driven.is_idle(); }));
    QApplication::processEvents();
  }
  void trigger(const char* command) const {
    auto* action = find<QAction>(command);
    EXPECT_TRUE(action->isEnabled()) << command;
    action->trigger();
    wait_until_idle();
  }
  static void drop(QWidget* target, const std::vector<std::string>& paths) {
    EXPECT_TRUE(DrivenWindow::drop(target, paths));
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
  DrivenWindow driven{alerts, chooser};
  QtMainThread& main_thread = driven.main_thread;
  QtDesktop& desktop = driven.desktop;
  std::unique_ptr<BrindleAppController>& controller = driven.controller;
  std::unique_ptr<MainWindow>& window = driven.window;
  QDialog* sheet = nullptr;  ///< what with_sheet shows
};

}  // namespace brindle::test
