#include <QAction>

#include "window/window_fixture.h"

namespace brindle::test {
namespace {

// Counts how often anything asks for another layout.
class LayoutCounter final : public QObject {
 public:
  int requests = 0;

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::LayoutRequest) ++requests;
    return false;
  }
};

using IdleTest = WindowTest;

// Two layouts that follow each other would keep a processor busy for as long as the window is open.
TEST_F(IdleTest, AWindowThatNobodyTouchesRests) {
  for (int method = 0; method < 10; ++method) {
    find<QAction>(qPrintable(QStringLiteral("method%1").arg(method)))->trigger();
    QTest::qWait(50);
    LayoutCounter counter;
    qApp->installEventFilter(&counter);
    QTest::qWait(100);
    qApp->removeEventFilter(&counter);
    EXPECT_LE(counter.requests, 5) << "method " << method;
  }
}

}  // namespace
}  // namespace brindle::test
