#pragma once

// The ports of a user interface, played by a test: answers are written down beforehand, what was shown is kept, time
// moves when the test says so. Jobs run when they are started, when the test lets them go, or on a thread of their own.

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "app/ports.h"
#include "platform/date.h"
#include "support/temp_tree.h"

namespace brindle::test {

/// Alerts: a question that has no answer written down fails the test.
class ScriptedAlerts final : public AlertPort {
 public:
  std::vector<Alert> shown;
  std::deque<std::size_t> answers;  ///< buttons, for questions (two buttons and more) in order
  std::function<void(const Alert&)> while_shown;

  std::size_t show(const Alert& alert) override {
    shown.push_back(alert);
    if (while_shown) while_shown(alert);
    if (alert.buttons.size() < 2) return 0;
    if (answers.empty()) {
      ADD_FAILURE() << "unexpected question: " << alert.title << ": " << alert.message;
      return alert.buttons.size() - 1;
    }
    const std::size_t answer = answers.front();
    answers.pop_front();
    return answer;
  }

  /// The message keys shown since the last call (the message itself where there is no key).
  std::vector<std::string> take() {
    std::vector<std::string> keys;
    for (const Alert& alert : shown)
      keys.push_back(alert.message_key.empty() ? alert.message : std::string(alert.message_key));
    shown.clear();
    return keys;
  }
};

/// Panels: each answers with the next list of paths, and is cancelled when there is none.
class ScriptedChooser final : public ChooserPort {
 public:
  std::deque<std::vector<std::string>> open_answers;
  std::deque<std::string> save_answers;
  std::vector<OpenRequest> opened;
  std::vector<SaveRequest> saved;

  std::vector<std::string> choose(const OpenRequest& request) override {
    opened.push_back(request);
    return next(open_answers).value_or(std::vector<std::string>());
  }
  std::optional<std::string> choose(const SaveRequest& request) override {
    saved.push_back(request);
    return next(save_answers);
  }

 private:
  template <class Answer>
  static std::optional<Answer> next(std::deque<Answer>& answers) {
    if (answers.empty()) return std::nullopt;
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }
};

/// A queue and timers that move by hand.
class ScriptedMainThread final : public MainThreadPort {
 public:
  void post(std::function<void()> call) override {
    const std::lock_guard lock(mutex_);
    queue_.push_back(std::move(call));
    most_queued_ = std::max(most_queued_, queue_.size());
    posted_.notify_all();
  }
  TimerId start_timer(std::chrono::milliseconds after, std::function<void()> call) override {
    timers_.emplace(std::pair(now_ + after, ++last_timer_), std::move(call));
    return last_timer_;
  }
  void cancel_timer(TimerId timer) override {
    std::erase_if(timers_, [timer](const auto& entry) { return entry.first.second == timer; });
  }

  /// Runs what is posted, and what that posts.
  void run_posted() {
    while (run_one()) continue;
  }
  /// Runs posted calls, and waits for more, until `done` says so; fails the test after a minute.
  void run_until(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!done()) {
      if (run_one()) continue;
      std::unique_lock lock(mutex_);
      if (!posted_.wait_until(lock, end, [this] { return !queue_.empty(); })) {
        ADD_FAILURE() << "nothing was posted for a minute";
        return;
      }
    }
  }
  /// Lets time pass: due timers fire in order, each at its moment.
  void advance(std::chrono::milliseconds time) {
    const std::chrono::milliseconds end = now_ + time;
    run_posted();
    while (!timers_.empty() && timers_.begin()->first.first <= end) {
      now_ = timers_.begin()->first.first;
      const auto due = timers_.extract(timers_.begin());
      due.mapped()();
      run_posted();
    }
    now_ = end;
  }

  std::size_t timers() const { return timers_.size(); }
  std::chrono::milliseconds elapsed() const { return now_; }
  Date date() const { return Date(std::chrono::milliseconds(1'700'000'000'000) + now_); }
  /// The longest that the queue has ever been.
  std::size_t most_queued() const {
    const std::lock_guard lock(mutex_);
    return most_queued_;
  }

 private:
  bool run_one() {
    std::function<void()> call;
    {
      const std::lock_guard lock(mutex_);
      if (queue_.empty()) return false;
      call = std::move(queue_.front());
      queue_.pop_front();
    }
    call();
    return true;
  }

  mutable std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<std::function<void()>> queue_;
  std::size_t most_queued_ = 0;
  std::map<std::pair<std::chrono::milliseconds, TimerId>, std::function<void()>> timers_;
  std::chrono::milliseconds now_{0};
  TimerId last_timer_ = 0;
};

/// Runs work at once on the caller's thread; while `hold` is set, only when release() is called.
class SynchronousWorker final : public WorkerPort {
 public:
  bool hold = false;

  explicit SynchronousWorker(MainThreadPort& main_thread) : main_thread_(main_thread) {}
  void run(std::function<void()> work, std::function<void()> finished) override {
    EXPECT_FALSE(held_) << "two pieces of work at a time";
    held_ = [this, work = std::move(work), finished = std::move(finished)] {
      work();
      main_thread_.post(finished);
    };
    if (!hold) release();
  }
  void release() {
    if (const auto work = std::exchange(held_, nullptr)) work();
  }

 private:
  MainThreadPort& main_thread_;
  std::function<void()> held_;
};

/// Runs each piece of work on a thread of its own.
class ThreadedWorker final : public WorkerPort {
 public:
  explicit ThreadedWorker(MainThreadPort& main_thread) : main_thread_(main_thread) {}
  ThreadedWorker(const ThreadedWorker&) = delete;
  ThreadedWorker& operator=(const ThreadedWorker&) = delete;
  ~ThreadedWorker() override { join(); }
  void run(std::function<void()> work, std::function<void()> finished) override {
    join();
    thread_ = std::thread([this, work = std::move(work), finished = std::move(finished)] {
      work();
      main_thread_.post(finished);
    });
  }

 private:
  void join() {
    if (thread_.joinable()) thread_.join();
  }
  MainThreadPort& main_thread_;
  std::thread thread_;
};

/// Keeps what the desktop was asked for.
class ScriptedDesktop final : public DesktopPort {
 public:
  std::vector<std::string> log;  ///< "tooltip KEY", "hide", "focus KEY", "list", "front", "beep", "open PATH", …
  std::vector<std::string> clipboard;
  std::optional<std::u16string> custom_tag;
  std::function<void()> on_end_editing;
  bool can_open = true;
  bool has_quit = false;

  void show_tooltip(TooltipAnchor /*anchor*/, std::string_view key, const std::string& text) override {
    EXPECT_FALSE(text.empty());
    note("tooltip", key);
  }
  void hide_tooltip() override { note("hide"); }
  void end_editing() override {
    if (on_end_editing) on_end_editing();
  }
  void focus_setting(std::string_view key) override { note("focus", key); }
  void focus_list() override { note("list"); }
  void bring_to_front() override { note("front"); }
  void beep() override { note("beep"); }
  bool open_with_default_application(const std::string& path) override {
    note("open", path);
    return can_open;
  }
  void show_help(std::string_view page) override { note("help", page); }
  std::vector<std::string> files_on_clipboard() override { return clipboard; }
  std::optional<std::u16string> ask_custom_tag() override { return custom_tag; }
  void quit() override { has_quit = true; }

  bool has(std::string_view entry) const { return std::find(log.begin(), log.end(), entry) != log.end(); }

 private:
  void note(std::string_view what, std::string_view about = {}) {
    log.push_back(std::string(what) + (about.empty() ? "" : " ") + std::string(about));
  }
};

/// All ports together.
struct ScriptedPorts {
  ScriptedAlerts alerts;
  ScriptedChooser chooser;
  ScriptedMainThread main_thread;
  SynchronousWorker worker{main_thread};
  ThreadedWorker threaded_worker{main_thread};
  ScriptedDesktop desktop;

  Ports ports() { return {alerts, chooser, main_thread, worker, desktop}; }
  Ports threaded_ports() { return {alerts, chooser, main_thread, threaded_worker, desktop}; }
  std::function<Date()> clock() {
    return [this] { return main_thread.date(); };
  }
};

/// A person's home folder for one test: data and configuration go there.
class TempHome : public TempTree {
 public:
  TempHome() {
    ::setenv("XDG_DATA_HOME", (*this / "data").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (*this / "config").c_str(), 1);
  }
  TempHome(const TempHome&) = delete;
  TempHome& operator=(const TempHome&) = delete;
  ~TempHome() {
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("XDG_CONFIG_HOME");
  }
  std::string data() const { return *this / "data/Tessalon/Brindle4"; }
};

}  // namespace brindle::test
