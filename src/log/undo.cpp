#include "log/undo.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>

#include "log/undo_progress.h"
#include "platform/atomic_file.h"
#include "platform/folder_handle.h"
#include "platform/move.h"

namespace brindle {
namespace {

constexpr std::string_view source_taken = "another file has its old name";
constexpr std::string_view target_gone = "it is no longer there";
constexpr std::string_view source_folder_gone = "the folder it was in is no longer there";

/// A folder held open as long as entry after entry lies in it.
///
/// A path that is held cannot come to mean another folder by our own moves: an entry's move changes what is below its
/// target and its source only, the held folders are always those of the entry at hand, and neither can lie below either
/// (the move into itself is refused, and so is the one onto a source that is there).
class HeldFolder {
 public:
  // Brings what was done so far on the folder's disk to that disk; most disks keep their order.
  void sync() const {
    if (handle_) ::fsync(handle_.descriptor());
  }

  const FolderHandle& at(std::string_view path) {
    const bool same = path.data() == text_.data() || path == text_;
    if (!same) handle_ = FolderHandle::open(std::string(path));
    text_ = path;
    return handle_;
  }

 private:
  std::string_view text_;  // the log keeps it
  FolderHandle handle_;
};

bool are_one_folder(const FolderHandle& a, const FolderHandle& b) {
  FolderStamp first;
  FolderStamp second;
  return a.stamp(first) && b.stamp(second) && first.device == second.device && first.inode == second.inode;
}

/// Moves entries back.
class Restorer {
 public:
  /// Empty when the entry is back at its source, else why not.
  std::string_view restore(const LogEntry& entry, MoveWatcher& watcher) {
    const FolderHandle& target = targets_.at(entry.target_folder);
    const FolderHandle& source = sources_.at(entry.source_folder);
    if (!target) return target.error() == ENOENT ? target_gone : text(target.error());
    if (!source) return source.error() == ENOENT ? source_folder_gone : text(source.error());
    int error = move_exclusively(target, entry.target_name.data(), source, entry.source_name.data(), &watcher);
    if (error == EEXIST && are_one_folder(target, source)) {
      error = move_changing_case(target, entry.target_name.data(), entry.source_name.data());
    }
    if (error == 0) return {};
    return error == ENOENT ? target_gone : error == EEXIST ? source_taken : text(error);
  }

  /// Settles what an undo before this one left half done; true when that one had come through.
  bool settle_half_step(const LogEntry& entry) {
    const FolderHandle& target = targets_.at(entry.target_folder);
    const FolderHandle& source = sources_.at(entry.source_folder);
    return target && source &&
           settle_two_step_move(target, entry.target_name.data(), source, entry.source_name.data(), 0) ==
               SettledMove::moved;
  }

  void sync() const { sources_.sync(); }

  bool source_exists(const LogEntry& entry) {
    const FolderHandle& source = sources_.at(entry.source_folder);
    return source && source.exists(entry.source_name.data());
  }
  bool target_exists(const LogEntry& entry) {
    const FolderHandle& target = targets_.at(entry.target_folder);
    return target && target.exists(entry.target_name.data());
  }

 private:
  std::string_view text(int error) {
    text_ = system_error_text(error);
    return text_;
  }

  HeldFolder targets_;
  HeldFolder sources_;
  std::string text_;
};

/// An entry's mark, for a move that takes two steps.
class HalfMark final : public MoveWatcher {
 public:
  HalfMark(UndoProgress& progress, std::size_t index) : progress_(progress), index_(index) {}
  void half_step() noexcept override { progress_.set(index_, UndoMark::half); }

 private:
  UndoProgress& progress_;
  std::size_t index_;
};

class Undoing {
 public:
  Undoing(const LogFile& log, UndoProgress& progress, const UndoReport& report, UndoResult& result)
      : log_(log), progress_(progress), report_(report), result_(result) {}

  void run(const JobControl& control) {
    ProgressThrottle throttle(control, log_.entries.size());
    std::size_t done = 0;
    for (std::size_t i = log_.entries.size(); i > 0; --i, ++done) {
      result_.cancelled = control.cancelled();
      if (result_.cancelled) break;
      const LogEntry& entry = log_.entries[i - 1];
      moved_ = false;
      const std::string_view reason = entry.fault.empty() ? undo(i - 1, entry) : entry.fault;
      if (reason.empty()) ++result_.restored;
      if (report_) report_(entry, reason, moved_);
      throttle.step(done + 1, [&] { return fmt::format("{}/{}", entry.source_folder, entry.source_name); });
    }
    restorer_.sync();  // the log may be on another disk, and must not go before the names are safe
    throttle.finish(done);
  }

 private:
  std::string_view undo(std::size_t index, const LogEntry& entry) {
    const UndoMark before = progress_.get(index);
    if (before == UndoMark::restored && progress_.is_certain()) return {};
    const bool came_through = before == UndoMark::half && restorer_.settle_half_step(entry);
    progress_.set(index, came_through ? UndoMark::restored : UndoMark::begun);
    if (came_through) return {};
    HalfMark half(progress_, index);
    std::string_view reason = restorer_.restore(entry, half);
    moved_ = reason.empty();
    if (!reason.empty() && was_restored(before, entry)) reason = {};
    progress_.set(index, reason.empty() ? UndoMark::restored : UndoMark::left);
    return reason;
  }

  // After a move that came to nothing: whether an undo before this one is the cause.
  bool was_restored(UndoMark before, const LogEntry& entry) {
    if (before == UndoMark::restored) return true;  // had the disk lost it, the move would have come to something
    return before == UndoMark::begun && restorer_.source_exists(entry) && !restorer_.target_exists(entry);
  }

  const LogFile& log_;
  UndoProgress& progress_;
  const UndoReport& report_;
  UndoResult& result_;
  Restorer restorer_;
  bool moved_ = false;  // the entry at hand, and by this walk
};

}  // namespace

UndoResult undoRenaming(const std::string& log_path, const JobControl& control, const UndoReport& report) {
  return undoRenaming(log_path, readLogFile(log_path), control, report);
}

UndoResult undoRenaming(const std::string& log_path, const LogFile& log, const JobControl& control,
                        const UndoReport& report) {
  UndoResult result;
  result.error = log.error;
  result.entries = log.entries.size();
  UndoProgress progress;
  if (result.error.empty()) result.error = progress.open(log_path, log.checksum, log.entries.size());
  if (!result.error.empty()) return result;
  Undoing(log, progress, report, result).run(control);
  if (result.cancelled) return result;
  result.error = deleteLogFile(log_path);
  result.log_removed = result.error.empty();
  if (result.log_removed) progress.remove();
  return result;
}

}  // namespace brindle
