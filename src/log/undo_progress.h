#pragma once

// How far the undoing of a log got: a small file beside the log, one byte an entry, there while the log is being undone
// and as long as an undo of it did not come to its end. One thread.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "log/journal_format.h"
#include "platform/file_descriptor.h"
#include "platform/status.h"

namespace brindle {

/// A hint, no more: the mark may be on the disk and the move not, or the other way round.
enum class UndoMark : std::uint8_t {
  none = 0,      ///< not reached
  begun = 1,     ///< about to be moved back
  restored = 2,  ///< moved back
  left = 3,      ///< left alone
  half = 4,      ///< being moved back in two steps (platform/move.h): the entry may have both names
};

/// How an undo of a log ended.
enum class UndoEnd : std::uint8_t {
  open = 0,      ///< it did not: killed, cancelled, or still going on
  partial = 1,   ///< some entries were left alone
  complete = 2,  ///< every entry was restored, and the log could not be put away
};

class UndoProgress {
 public:
  /// Locks the log, and goes on with what an undo of it (same bytes) left, or begins anew. Where nothing can be kept
  /// beside the log, the data folder will do; where nothing can be kept at all (a full disk), the marks are lost with
  /// this object. Fails, with a sentence that names the log, when the log is gone, cannot be locked, or is just being
  /// undone by another process.
  Status open(const std::string& log_path, std::uint64_t log_checksum, std::size_t entries);

  UndoMark get(std::size_t entry) const;
  void set(std::size_t entry, UndoMark mark);
  /// Whether an undo before this one left marks, and how it ended.
  bool goes_on() const { return goes_on_; }
  UndoEnd end_before() const { return end_before_; }

  /// Brings to the disk who is who among entries that pass their names round, before the first of them moves: an inode
  /// for each of the entries from `first` on. 0, or errno; ENOSPC where nothing can be kept.
  [[nodiscard]] int keep_inodes(std::size_t first, std::span<const std::uint64_t> inodes);
  /// What was kept of them, also by an undo before this one; empty when nothing was.
  std::vector<std::uint64_t> kept_inodes(std::size_t first, std::size_t count) const;

  /// Writes down how this undo ended.
  void finish(UndoEnd end);
  /// Deletes the file: the log is put away.
  void remove();

 private:
  Status lock(const std::string& log_path);
  int open_file(const std::string& path);
  int adopt_or_begin(std::uint64_t log_checksum, std::size_t entries);
  std::uint64_t inodes_offset(std::size_t entry) const;
  void close_file();

  FileDescriptor log_;  // held locked
  FileDescriptor file_;
  std::string path_;
  MarkMap marks_;
  std::size_t entries_ = 0;
  bool is_durable_ = false;
  std::vector<std::uint8_t> unkept_;  // the marks where there is no file
  bool goes_on_ = false;
  UndoEnd end_before_ = UndoEnd::open;
};

/// Where progress is kept beside a log.
std::string undo_progress_path(const std::string& log_path);

/// The undo of a log that did not restore everything: killed, cancelled, or some entries were left alone.
struct BrokenOffUndo {
  std::string log_path;
  std::size_t restored = 0;
  std::size_t entries = 0;
  UndoEnd end = UndoEnd::open;
};

/// What an undo left beside this log; no entries when there is no such trace, or when the log is just being undone by
/// another process. Any thread.
BrokenOffUndo broken_off_undo(const std::string& log_path);
/// Those of all logs of a folder that were killed or cancelled, by name.
std::vector<BrokenOffUndo> broken_off_undos(const std::string& log_folder);

}  // namespace brindle
