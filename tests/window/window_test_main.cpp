#include <gtest/gtest.h>

#include <QApplication>

#include "window/text.h"
#include "window/theme.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // Needs no screen unless it is told which.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  brindle::use_window_style();
  brindle::show_plain_text_only();
  return RUN_ALL_TESTS();
}
