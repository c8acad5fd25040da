#pragma once

// What a long piece of work gets from whoever runs it: a way to be cancelled, and a place for its progress. Jobs are
// plain functions; on which thread they run is their caller's business.

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brindle {

/// What a job says it is doing.
struct Progress {
  std::size_t done = 0;
  std::size_t total = 0;  ///< 0 when not known beforehand
  std::string_view path;  ///< the item at hand (bytes, on-disk form); valid during the call only
  bool last = false;      ///< the job's final report: `done` is the true count
};

/// Takes progress. Called on the job's thread, at most 30 times a second and once more at the end; must not block.
class ProgressSink {
 public:
  virtual ~ProgressSink() = default;
  virtual void report(const Progress& progress) = 0;
};

/// The strings between a job and its owner. The flag may be set from any thread and from a signal handler; it is looked
/// at between items, never inside a rename.
struct JobControl {
  std::atomic<bool>* isCancelProcess = nullptr;
  ProgressSink* progress = nullptr;

  bool cancelled() const { return isCancelProcess != nullptr && isCancelProcess->load(std::memory_order_relaxed); }
  void cancel() const {
    if (isCancelProcess != nullptr) isCancelProcess->store(true, std::memory_order_relaxed);
  }
};

/// Passes on as much progress as a person can see. One thread.
class ProgressThrottle {
 public:
  explicit ProgressThrottle(const JobControl& control, std::size_t total = 0)
      : sink_(control.progress), total_(total) {}

  /// Cheap: reads the clock every so many calls only. `path` is a function, called when the report goes out.
  template <class Path>
  void step(std::size_t done, Path&& path) {
    if (sink_ == nullptr || (++calls_ & 63U) != 0) return;
    const auto now = Clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds(34);
    const auto text = path();
    sink_->report({done, total_, text, false});
  }
  void finish(std::size_t done) {
    if (sink_ != nullptr) sink_->report({done, total_, {}, true});
  }

 private:
  using Clock = std::chrono::steady_clock;
  ProgressSink* sink_;
  std::size_t total_;
  std::uint32_t calls_ = 0;
  Clock::time_point next_{};
};

}  // namespace brindle
