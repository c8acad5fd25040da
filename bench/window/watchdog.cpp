#include "window/watchdog.h"

#include <cxxabi.h>
#include <execinfo.h>
#include <pthread.h>
#include <time.h>

#include <QCoreApplication>
#include <QEvent>
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <utility>

namespace brindle::bench {
namespace {

constexpr int look_signal = SIGUSR2;
constexpr std::chrono::milliseconds between{1};
constexpr std::chrono::milliseconds before_looking{30};

// What the signal's handler found. The watching thread alone asks for it, and waits.
std::array<void*, 48> found;
std::atomic<int> found_count{0};

void look(int /*signal*/) {
  found_count.store(::backtrace(found.data(), static_cast<int>(found.size())), std::memory_order_release);
}

double processor_time(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double work_of(pthread_t thread) {
  clockid_t clock{};
  return ::pthread_getcpuclockid(thread, &clock) == 0 ? processor_time(clock) : 0;
}

// "program(_ZN…+0x12) [0x…]" as a name.
std::string readable(const std::string& symbol) {
  const std::size_t begin = symbol.find('(');
  const std::size_t end = symbol.find('+', begin);
  if (begin == std::string::npos || end == std::string::npos || end == begin + 1) return symbol;
  const std::string name = symbol.substr(begin + 1, end - begin - 1);
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> text(abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status),
                                                    std::free);
  return status == 0 ? text.get() : name;
}

std::vector<std::string> names_of(void* const* calls, int count) {
  const std::unique_ptr<char*, void (*)(void*)> symbols(::backtrace_symbols(calls, count), std::free);
  std::vector<std::string> names;
  for (int i = 2; symbols && i < count; ++i) names.push_back(readable(symbols.get()[i]));
  return names;
}

}  // namespace

Watchdog::Watchdog() : main_thread_(::pthread_self()) {
  struct sigaction action {};
  action.sa_handler = look;
  action.sa_flags = SA_RESTART;
  ::sigaction(look_signal, &action, nullptr);
  look(0);  // the first call loads a library
  thread_ = std::thread([this] { watch(); });
}

Watchdog::~Watchdog() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  thread_.join();
}

void Watchdog::start() {
  const std::lock_guard lock(mutex_);
  longest_ = {};
}

Gap Watchdog::stop() {
  const std::lock_guard lock(mutex_);
  return std::exchange(longest_, {});
}

void Watchdog::watch() {
  while (true) {
    std::this_thread::sleep_for(between);
    const std::lock_guard lock(mutex_);
    if (ends_) return;
    if (!is_waiting_) {
      post();
    } else if (!has_looked_ && Clock::now() - posted_ > before_looking) {
      look_where();
    }
  }
}

void Watchdog::post() {
  is_waiting_ = true;
  has_looked_ = false;
  call_count_ = 0;
  posted_ = Clock::now();
  posted_work_ = work_of(main_thread_);
  QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void Watchdog::look_where() {
  has_looked_ = true;
  found_count.store(0);
  if (::pthread_kill(main_thread_, look_signal) != 0) return;
  for (int i = 0; i < 1000 && found_count.load(std::memory_order_acquire) == 0; ++i)
    std::this_thread::sleep_for(std::chrono::microseconds(50));
  call_count_ = found_count.load(std::memory_order_acquire);
  calls_ = found;
}

bool Watchdog::event(QEvent* event) {
  if (event->type() != QEvent::User) return QObject::event(event);
  arrived();
  return true;
}

void Watchdog::arrived() {
  const Clock::time_point now = Clock::now();
  const std::lock_guard lock(mutex_);
  is_waiting_ = false;
  const double gap = std::chrono::duration<double, std::milli>(now - posted_).count();
  if (gap <= longest_.milliseconds) return;
  longest_ = {gap, processor_time(CLOCK_THREAD_CPUTIME_ID) - posted_work_, names_of(calls_.data(), call_count_)};
}

}  // namespace brindle::bench
