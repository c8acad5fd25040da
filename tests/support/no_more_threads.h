#pragma once

// A system that has no thread left to give, for this process.

#include <pthread.h>

#include <cstddef>

namespace brindle::test {

/// While it lives, no thread can be begun: each would need a stack that fits into no memory.
class NoMoreThreads {
 public:
  NoMoreThreads() {
    ::pthread_getattr_default_np(&before_);
    pthread_attr_t attributes;
    ::pthread_attr_init(&attributes);
    ::pthread_attr_setstacksize(&attributes, std::size_t{1} << 50U);
    ::pthread_setattr_default_np(&attributes);
    ::pthread_attr_destroy(&attributes);
  }
  NoMoreThreads(const NoMoreThreads&) = delete;
  NoMoreThreads& operator=(const NoMoreThreads&) = delete;
  ~NoMoreThreads() {
    ::pthread_setattr_default_np(&before_);
    ::pthread_attr_destroy(&before_);
  }

 private:
  pthread_attr_t before_{};
};

}  // namespace brindle::test
