#pragma once

// The toolkit's event loop as the controllers' main thread, and one worker thread for their jobs.

#include <QObject>
#include <memory>
#include <thread>
#include <unordered_map>

#include "app/ports.h"

class QTimer;

namespace brindle {

class QtMainThread final : public QObject, public MainThreadPort {
 public:
  QtMainThread();
  ~QtMainThread() override;

  void post(std::function<void()> call) override;
  TimerId start_timer(std::chrono::milliseconds after, std::function<void()> call) override;
  void cancel_timer(TimerId timer) override;

 private:
  std::unordered_map<TimerId, std::unique_ptr<QTimer>> timers_;
  TimerId last_timer_ = 0;
};

class QtWorker final : public WorkerPort {
 public:
  explicit QtWorker(MainThreadPort& main_thread) : main_thread_(main_thread) {}
  QtWorker(const QtWorker&) = delete;
  QtWorker& operator=(const QtWorker&) = delete;
  /// Waits for work that is going on.
  ~QtWorker() override;

  void run(std::function<void()> work, std::function<void()> finished) override;

 private:
  MainThreadPort& main_thread_;
  std::thread thread_;
};

}  // namespace brindle
