#pragma once

// Reads the metadata of the next items on another core while names are being made in order.

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>

namespace brindle {

/// One thread that reads, for one thread that announces rows and takes their values, both in rising order. What comes
/// out does not depend on how far the reader has got: a value that is not there yet is read by whoever needs it.
template <class Value>
class MetadataAhead {
 public:
  using Read = std::function<Value(const std::string& path)>;

  /// `read` is called on the reading thread; an exception of it counts as a value that was not read. At most `window`
  /// values are waiting at any time.
  explicit MetadataAhead(Read read, std::size_t window = 64)
      : read_(std::move(read)), window_(std::thread::hardware_concurrency() < 2 ? 0 : window) {}
  MetadataAhead(const MetadataAhead&) = delete;
  MetadataAhead& operator=(const MetadataAhead&) = delete;

  /// Waits for the read that is going on.
  ~MetadataAhead() {
    {
      const std::lock_guard lock(mutex_);
      stops_ = true;
    }
    changed_.notify_all();
    if (reader_.joinable()) reader_.join();
  }

  /// Whether another row can be announced now. Never, on a machine with one core.
  bool has_room() const {
    const std::lock_guard lock(mutex_);
    return rows_.size() < window_;
  }

  /// Announces that the value of `row` will be wanted; ignored when there is no room.
  void expect(std::size_t row, std::string path) {
    {
      const std::lock_guard lock(mutex_);
      if (rows_.size() >= window_) return;
      rows_.push_back({row, std::move(path), State::waiting, std::nullopt});
    }
    changed_.notify_all();
    if (!reader_.joinable()) reader_ = std::thread([this] { run(); });
  }

  /// The value of an announced row; none when it has not been begun, and then it is the caller's to read. Waits for a
  /// read that is going on. Rows before this one are forgotten.
  std::optional<Value> take(std::size_t row) {
    std::unique_lock lock(mutex_);
    while (!rows_.empty() && rows_.front().row <= row) {
      changed_.wait(lock, [this] { return rows_.front().state != State::reading; });
      Row front = std::move(rows_.front());
      rows_.pop_front();
      if (front.state == State::read && next_ > 0) --next_;
      if (front.row == row) return std::move(front.value);
    }
    return std::nullopt;
  }

 private:
  enum class State { waiting, reading, read };
  struct Row {
    std::size_t row;
    std::string path;
    State state;
    std::optional<Value> value;
  };

  void run() {
    std::unique_lock lock(mutex_);
    while (true) {
      changed_.wait(lock, [this] { return stops_ || next_ < rows_.size(); });
      if (stops_) return;
      // A deque's elements stay where they are while others come and go at its ends, and this one cannot go.
      Row& row = rows_[next_];
      row.state = State::reading;
      lock.unlock();
      std::optional<Value> value;
      try {
        value = read_(row.path);
      } catch (...) {
        value.reset();
      }
      lock.lock();
      row.value = std::move(value);
      row.state = State::read;
      ++next_;
      changed_.notify_all();
    }
  }

  Read read_;
  std::size_t window_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Row> rows_;  // in rising order; the first `next_` have been read
  std::size_t next_ = 0;
  bool stops_ = false;
  std::thread reader_;
};

}  // namespace brindle
