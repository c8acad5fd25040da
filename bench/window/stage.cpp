#include "window/stage.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <utility>

namespace brindle::bench {
namespace {

// What comes after the last event of a phase is its own.
constexpr qint64 calm = 60;

double milliseconds(const QElapsedTimer& clock) {
  return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

}  // namespace

Stage::Stage() {
  controller_ = std::make_unique<BrindleAppController>(Ports{alerts_, chooser_, main_thread_, worker_, desktop_});
  if (!controller_->awakeFromNib()) qFatal("no data folder");
  window_ = std::make_unique<MainWindow>(*controller_);
  desktop_.set_window(window_.get());
  window_->resize(1400, 900);
  window_->show();
  controller_->applicationDidFinishLaunching();
  window_->activateWindow();
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
  main_thread_.post([&] {
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

void Stage::drop(const std::vector<std::string>& paths) const {
  QMimeData data;
  QList<QUrl> urls;
  for (const std::string& path : paths)
    urls << QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"));
  data.setUrls(urls);
  QWidget* target = find("listPanel");
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(target, &enter);
  QDropEvent event({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(target, &event);
}

void Stage::close() {
  if (!window_) return;
  window_->close_now();
  desktop_.set_window(nullptr);
  window_.reset();
  controller_.reset();
}

}  // namespace brindle::bench
