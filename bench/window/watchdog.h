#pragma once

// Measures for how long a main thread does not come round: a thread of its own posts an event every millisecond and
// keeps the longest time that one had to wait.

#include <QObject>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace brindle::bench {

struct Gap {
  double milliseconds = 0;
  double at_work = 0;  ///< processor time that the main thread used in it; the rest it waited for a processor
  std::vector<std::string> where;  ///< calls on the main thread, after 30 ms of the gap; empty for a shorter one
};

class Watchdog final : public QObject {
 public:
  /// Watches the thread that makes it.
  Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;
  ~Watchdog() override;

  void start();
  /// The longest gap since start().
  Gap stop();

  bool event(QEvent* event) override;

 private:
  using Clock = std::chrono::steady_clock;
  void watch();
  void post();
  void look_where();
  void arrived();

  pthread_t main_thread_;
  std::mutex mutex_;
  bool ends_ = false;
  bool is_waiting_ = false;
  bool has_looked_ = false;
  Clock::time_point posted_;
  double posted_work_ = 0;
  Gap longest_;
  std::array<void*, 48> calls_{};
  int call_count_ = 0;
  std::thread thread_;
};

}  // namespace brindle::bench
