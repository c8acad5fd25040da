#pragma once

// How far the undoing of a log got: a small file beside the log, one byte an entry, there while the log is being undone
// and after an undo that was broken off. One thread.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "log/mark_map.h"

namespace brindle {

enum class UndoMark : std::uint8_t {
  none = 0,      ///< not reached
  begun = 1,     ///< about to be moved back
  restored = 2,  ///< moved back
  left = 3,      ///< left alone
  half = 4,      ///< being moved back in two steps (platform/two_step_move.h): the entry may have both names
};

class UndoProgress {
 public:
  UndoProgress() = default;
  UndoProgress(const UndoProgress&) = delete;
  UndoProgress& operator=(const UndoProgress&) = delete;
  ~UndoProgress();

  /// Goes on with what an undo of the same log (same bytes) left, or begins anew. Where nothing can be kept beside the
  /// log, the data folder will do. Returns a sentence when neither can be had, or when the log is just being undone by
  /// another process.
  [[nodiscard]] std::string open(const std::string& log_path, std::uint64_t log_checksum, std::size_t entries);

  UndoMark get(std::size_t entry) const { return static_cast<UndoMark>(marks_.get(entry)); }
  void set(std::size_t entry, UndoMark mark) { marks_.set(entry, static_cast<std::uint8_t>(mark)); }
  /// Whether the marks found by open() are the whole truth: the system has not gone down since they were made.
  bool is_certain() const { return certain_; }

  /// Deletes the file: the log is gone.
  void remove();

 private:
  int open_file(const std::string& path);
  int adopt_or_begin(std::uint64_t log_checksum, std::size_t entries);

  MarkMap marks_;
  std::string path_;
  int descriptor_ = -1;
  bool certain_ = true;
};

/// Where progress is kept beside a log.
std::string undo_progress_path(const std::string& log_path);

/// The undo of a log that was broken off: killed, or cancelled.
struct BrokenOffUndo {
  std::string log_path;
  std::size_t restored = 0;
  std::size_t entries = 0;
};

/// What an undo left beside this log; no entries when there is no such trace, or when the log is just being undone by
/// another process. Any thread.
BrokenOffUndo broken_off_undo(const std::string& log_path);
/// Those of all logs of a folder, by name.
std::vector<BrokenOffUndo> broken_off_undos(const std::string& log_folder);

}  // namespace brindle
