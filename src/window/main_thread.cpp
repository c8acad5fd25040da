#include "window/main_thread.h"

#include <QMetaObject>
#include <QTimer>
#include <utility>

#include "platform/process.h"

namespace brindle {

QtMainThread::QtMainThread() = default;
QtMainThread::~QtMainThread() = default;

void QtMainThread::post(std::function<void()> call) {
  QMetaObject::invokeMethod(this, std::move(call), Qt::QueuedConnection);
}

QtMainThread::TimerId QtMainThread::start_timer(std::chrono::milliseconds after, std::function<void()> call) {
  const TimerId id = ++last_timer_;
  auto timer = std::make_unique<QTimer>();
  timer->setSingleShot(true);
  timer->callOnTimeout(this, [this, id, call = std::move(call)] {
    // What is called may start and cancel timers, this one among them; it lives until the loop comes round.
    if (const auto fired = timers_.extract(id)) fired.mapped().release()->deleteLater();
    call();
  });
  timer->start(after);
  timers_.emplace(id, std::move(timer));
  return id;
}

void QtMainThread::cancel_timer(TimerId timer) {
  timers_.erase(timer);
}

QtWorker::~QtWorker() {
  if (thread_.joinable()) thread_.join();
}

void QtWorker::run(std::function<void()> work, std::function<void()> finished) {
  if (thread_.joinable()) thread_.join();
  const auto both = [this, work = std::move(work), finished = std::move(finished)] {
    work();
    main_thread_.post(finished);
  };
  if (!start_thread(thread_, both)) both();  // the window stands still, and nothing is lost
}

}  // namespace brindle
