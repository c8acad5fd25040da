#pragma once

// Frees what takes long to free on a thread of its own, where there is one to be had.

#include <memory>
#include <thread>
#include <utility>

#include "platform/process.h"

namespace brindle {

/// Has one owner, on one thread, who waits when it goes.
class Disposal {
 public:
  Disposal() = default;
  Disposal(const Disposal&) = delete;
  Disposal& operator=(const Disposal&) = delete;
  ~Disposal() {
    if (thread_.joinable()) thread_.join();
  }

  template <class Thing>
  void throw_away(Thing thing) {
    auto held = std::make_unique<Thing>(std::move(thing));
    const auto earlier = std::make_shared<std::thread>(std::move(thread_));
    const bool started = start_thread(thread_, [held = std::move(held), earlier]() mutable {
      if (earlier->joinable()) earlier->join();
      held.reset();
    });
    if (!started) thread_ = std::move(*earlier);  // freed here and now instead
  }

 private:
  std::thread thread_;
};

}  // namespace brindle
