#pragma once

// The progress of the controller's jobs on its way from the job's thread to the main thread.

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "app/brindle_app_controller.h"

namespace brindle {

/// Keeps the newest report and has at most one call waiting on the main thread, so that a slow view neither holds a job
/// up nor lets a queue grow.
class BrindleAppController::ProgressRelay final : public ProgressSink,
                                                  public std::enable_shared_from_this<ProgressRelay> {
 public:
  struct Report {
    std::size_t done = 0;
    std::size_t total = 0;
    std::string path;
  };

  ProgressRelay(MainThreadPort& main_thread, std::function<void()> show)
      : main_thread_(main_thread), show_(std::move(show)) {}

  // On the job's thread.
  void report(const Progress& progress) override {
    {
      const std::lock_guard lock(mutex_);
      newest_.done = progress.done;
      newest_.total = progress.total;
      newest_.path.assign(progress.path);
      if (std::exchange(is_posted_, true)) return;
    }
    main_thread_.post([relay = weak_from_this()] {
      if (const auto here = relay.lock()) here->show_();
    });
  }

  // On the main thread.
  Report take() {
    const std::lock_guard lock(mutex_);
    is_posted_ = false;
    return newest_;
  }

 private:
  MainThreadPort& main_thread_;
  std::function<void()> show_;
  std::mutex mutex_;
  Report newest_;
  bool is_posted_ = false;
};

}  // namespace brindle
