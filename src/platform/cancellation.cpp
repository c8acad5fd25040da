#include "platform/cancellation.h"

#include <csignal>

namespace brindle {
namespace {

std::atomic<bool> end_is_asked_for = false;
static_assert(std::atomic<bool>::is_always_lock_free);  // or a signal handler could not set it

extern "C" void on_signal(int) {
  end_is_asked_for.store(true, std::memory_order_relaxed);
}

}  // namespace

void catch_signals() {
  struct sigaction action {};
  action.sa_handler = on_signal;  // without SA_RESTART: a question that waits for its answer ends
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before {};
    ::sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);  // nohup stays in force
  }
  action.sa_handler = SIG_IGN;
  ::sigaction(SIGPIPE, &action, nullptr);
}

std::atomic<bool>& cancel_flag() {
  return end_is_asked_for;
}

}  // namespace brindle
