#pragma once

// One panel, or another part of the window, over a real controller; work runs at once.

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>
#include <cstdlib>
#include <memory>

#include "app/brindle_app_controller.h"
#include "app/options_controller.h"
#include "app/scripted_ports.h"
#include "app/window_model.h"
#include "texts/string_table.h"
#include "window/method_panels.h"
#include "window/setting_bindings.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle::test {

class PanelTest : public testing::Test {
 protected:
  PanelTest() {
    controller = std::make_unique<BrindleAppController>(ports.ports(), ports.clock());
    EXPECT_TRUE(controller->start());
    bindings = std::make_unique<SettingBindings>(controller->model().settings(), nullptr);
  }
  ~PanelTest() override {
    frame.reset();
    bindings.reset();
    controller.reset();
    set_language(languages().front());
    use_palette(false);
  }

  /// Puts a widget into a window of a size.
  void show(QWidget* widget, int width, int height) {
    frame = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(frame.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(widget);
    frame->resize(width, height);
    frame->show();
    frame->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(frame.get()));
  }
  QWidget* show_panel(std::int32_t tab) {
    controller->options().select_tab(static_cast<Method>(tab));
    // The fields of the panel before go with it.
    frame.reset();
    bindings = std::make_unique<SettingBindings>(controller->model().settings(), nullptr);
    QWidget* panel = method_panel(static_cast<Method>(tab)).make({*controller, *bindings}, nullptr);
    show(panel, 820, 250);
    return panel;
  }
  template <class Widget = QWidget>
  Widget* find(const char* name) const {
    auto* widget = frame->findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  void type(const char* field, const char* text) const {
    auto* widget = find(field);
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(widget, QString::fromUtf8(text));
  }
  const RenameSettings& values() const { return controller->model().values(); }

  static void picture(QWidget* widget, const std::string& name) {
    const char* folder = std::getenv("BRINDLE_TEST_PICTURES");
    if (folder == nullptr) return;
    QApplication::processEvents();
    widget->grab().save(QStringLiteral("%1/%2.png").arg(QString::fromLocal8Bit(folder), QString::fromStdString(name)));
  }

  TempHome home;
  ScriptedPorts ports;
  std::unique_ptr<BrindleAppController> controller;
  std::unique_ptr<SettingBindings> bindings;
  std::unique_ptr<QWidget> frame;
};

}  // namespace brindle::test
