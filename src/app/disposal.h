#pragma once

// Frees what takes long to free on a thread of its own.

#include <memory>
#include <thread>
#include <utility>

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
    thread_ = std::thread([held = std::move(held), earlier = std::exchange(thread_, {})]() mutable {
      if (earlier.joinable()) earlier.join();
      held.reset();
    });
  }

 private:
  std::thread thread_;
};

}  // namespace brindle
