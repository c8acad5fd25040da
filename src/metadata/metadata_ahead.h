#pragma once

// Reads the metadata of the next items on other cores while names are being made in order.

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/process.h"

namespace brindle {

/// Threads that read for the one thread that announces rows and takes their values, both in rising order. Rows go from
/// hand to hand in batches; whoever would have to wait for a value reads other rows meanwhile. What comes out does not
/// depend on how far anybody has got: a value that is not there yet is read by whoever needs it.
template <class Value>
class MetadataAhead {
 public:
  using Read = std::function<Value(const std::string& path)>;

  /// `read` is called on any of the threads, several at a time; an exception of it counts as a value that was not read.
  /// At most `window` values are waiting at any time.
  explicit MetadataAhead(Read read, std::size_t window = 128)
      : read_(std::move(read)),
        most_readers_(std::clamp(std::thread::hardware_concurrency(), 1U, 5U) - 1),
        window_(most_readers_ == 0 ? 0 : window) {}
  MetadataAhead(const MetadataAhead&) = delete;
  MetadataAhead& operator=(const MetadataAhead&) = delete;

  /// Waits for the reads that are going on.
  ~MetadataAhead() {
    {
      const std::lock_guard lock(mutex_);
      stops_ = true;
    }
    announced_.notify_all();
    for (std::thread& reader : readers_) reader.join();
  }

  /// Whether another row can be announced now. Never, on a machine with one core.
  bool has_room() const { return row_count_ < window_; }

  /// Announces that the value of `row` will be wanted; ignored when there is no room.
  void expect(std::size_t row, std::string path) {
    if (!has_room()) return;
    ++row_count_;
    filling_.push_back({row, std::move(path), std::nullopt});
    if (filling_.size() == batch_size) hand_over();
  }

  /// The value of an announced row; none when it could not be read, and then it is the caller's to try. Rows before
  /// this one are forgotten.
  std::optional<Value> take(std::size_t row) {
    while (true) {
      for (; taken_ < current_.size() && current_[taken_].row <= row; --row_count_) {
        Row& front = current_[taken_++];
        if (front.row == row) {
          --row_count_;
          return std::move(front.value);
        }
      }
      if (taken_ < current_.size() || !next_batch()) return std::nullopt;
    }
  }

 private:
  static constexpr std::size_t batch_size = 16;

  enum class State { waiting, reading, read };
  struct Row {
    std::size_t row;
    std::string path;
    std::optional<Value> value;
  };
  struct Batch {
    std::vector<Row> rows;
    State state = State::waiting;
  };

  void hand_over() {
    {
      const std::lock_guard lock(mutex_);
      batches_.push_back({std::exchange(filling_, {}), State::waiting});
    }
    announced_.notify_one();
    if (readers_.size() < most_readers_) start_reader();
  }

  void start_reader() {
    if (!start_thread(readers_.emplace_back(), [this] { run(); })) {
      readers_.pop_back();
      most_readers_ = readers_.size();
    }
  }

  // Makes the first batch the current one, once it has been read; false when there is none.
  bool next_batch() {
    std::unique_lock lock(mutex_);
    if (batches_.empty()) {
      if (filling_.empty()) return false;
      batches_.push_back({std::exchange(filling_, {}), State::waiting});
    }
    while (batches_.front().state != State::read) {
      if (Batch* const batch = first_waiting()) {
        read_batch(*batch, lock);
      } else {
        finished_.wait(lock);
      }
    }
    current_ = std::move(batches_.front().rows);
    taken_ = 0;
    batches_.pop_front();
    return true;
  }

  Batch* first_waiting() {
    const auto found =
        std::find_if(batches_.begin(), batches_.end(), [](const Batch& each) { return each.state == State::waiting; });
    return found == batches_.end() ? nullptr : &*found;
  }

  // A deque's elements stay where they are while others come and go at its ends, and one that is being read cannot go.
  void read_batch(Batch& batch, std::unique_lock<std::mutex>& lock) {
    batch.state = State::reading;
    lock.unlock();
    for (Row& row : batch.rows) {
      if (!stops_) read_row(row);
    }
    lock.lock();
    batch.state = State::read;
  }

  void read_row(Row& row) {
    try {
      row.value = read_(row.path);
    } catch (...) {
      row.value.reset();
    }
  }

  void run() {
    std::unique_lock lock(mutex_);
    while (true) {
      Batch* batch = nullptr;
      announced_.wait(lock, [&] { return stops_ || (batch = first_waiting()) != nullptr; });
      if (stops_) return;
      read_batch(*batch, lock);
      finished_.notify_one();
    }
  }

  Read read_;
  std::size_t most_readers_;
  std::size_t window_;

  // The caller's alone.
  std::size_t row_count_ = 0;  // announced and not taken
  std::vector<Row> filling_;   // announced, and not a batch yet
  std::vector<Row> current_;   // read; the first `taken_` are gone
  std::size_t taken_ = 0;

  std::mutex mutex_;
  std::condition_variable announced_;
  std::condition_variable finished_;
  std::deque<Batch> batches_;
  std::atomic<bool> stops_ = false;
  std::vector<std::thread> readers_;
};

}  // namespace brindle
