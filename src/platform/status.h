#pragma once

// The one way in which what a caller can act on fails. Plain data; any thread.

#include <optional>
#include <string>
#include <utility>

namespace brindle {

/// How something went: fine, or why not.
class [[nodiscard]] Status {
 public:
  Status() = default;  ///< fine
  /// `reason` is a clause or sentence (UTF-8, one line, without a full stop) for a person to read; "" is fine. `error`
  /// is the errno behind it, for the few callers that go by it; 0 where there is none.
  explicit Status(std::string reason, int error = 0) : reason_(std::move(reason)), error_(error) {}

  bool ok() const { return reason_.empty(); }
  const std::string& reason() const { return reason_; }
  int error() const { return error_; }

 private:
  std::string reason_;
  int error_ = 0;
};

/// A value, or why there is none. Whoever asks for the value has seen that ok() is true.
template <class T>
class [[nodiscard]] Result {
 public:
  // What a function returns is either the one or the other.
  // NOLINTBEGIN(google-explicit-constructor)
  Result(T value) : value_(std::move(value)) {}
  Result(Status failure) : status_(std::move(failure)) {}
  // NOLINTEND(google-explicit-constructor)

  bool ok() const { return value_.has_value(); }
  const Status& status() const { return status_; }
  const std::string& reason() const { return status_.reason(); }

  const T& operator*() const& { return *value_; }
  T& operator*() & { return *value_; }
  T&& operator*() && { return *std::move(value_); }
  const T* operator->() const { return &*value_; }
  T* operator->() { return &*value_; }

 private:
  std::optional<T> value_;
  Status status_;
};

}  // namespace brindle
