#include "window/stage.h"

#include <QApplication>

namespace brindle::bench {
namespace {

// What comes after the last event of a phase is its own.
constexpr qint64 calm = 60;

double milliseconds(const QElapsedTimer& clock) {
  return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

}  // namespace

Stage::Stage() {
  driven_.open(1400, 900);
  table_ = find<FileTableView>("fileTable");
  table_->viewport()->installEventFilter(this);
  clock_.start();
}

Stage::~Stage() {
  close();
}

bool Stage::eventFilter(QObject* /*object*/, QEvent* event) {
  // The event's own handling comes later; the phase ends well behind it.
  if (event->type() == QEvent::Paint) last_paint_ = milliseconds(clock_);
  return false;
}

Figure Stage::phase(const std::string& name, const std::function<void()>& acts, const std::function<bool()>& done) {
  watchdog_.start();
  clock_.restart();
  last_paint_ = 0;
  // As an event, like a key: so that what it blocks is seen.
  bool acted = false;
  driven_.main_thread.post([&] {
    acts();
    acted = true;
  });
  double idle_since = 0;
  const auto is_over = [&] { return acted && is_idle() && (!done || done()); };
  for (QElapsedTimer quiet; !quiet.isValid() || quiet.elapsed() < calm;) {
    QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    if (!is_over()) {
      quiet.invalidate();
    } else if (!quiet.isValid()) {
      idle_since = milliseconds(clock_);
      quiet.start();
    }
  }
  return {name, std::max(idle_since, last_paint_), watchdog_.stop()};
}

void Stage::close() {
  if (!driven_.window) return;
  driven_.window->close_now();
  driven_.close();
}

}  // namespace brindle::bench
