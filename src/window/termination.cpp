#include "window/termination.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <cstdint>
#include <utility>

namespace brindle {
namespace {

constexpr std::array signals_of_end = {SIGTERM, SIGINT, SIGHUP};

// A handler may do little more than write to a descriptor.
volatile int event_descriptor = -1;

extern "C" void end_was_requested(int /*signal*/) {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = ::write(event_descriptor, &one, sizeof one);
}

void handle_with(void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  for (const int signal : signals_of_end) ::sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationRequests::TerminationRequests(std::function<void()> ended) {
  event_descriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (event_descriptor < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(event_descriptor, QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [ended = std::move(ended)] {
    std::uint64_t count = 0;
    if (::read(event_descriptor, &count, sizeof count) > 0) ended();
  });
  handle_with(end_was_requested);
}

TerminationRequests::~TerminationRequests() {
  handle_with(SIG_DFL);
  notifier_.reset();
  if (event_descriptor >= 0) ::close(event_descriptor);
}

}  // namespace brindle
