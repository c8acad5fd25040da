#include "run/undo.h"

#include <fmt/format.h>

#include <cerrno>

#include "log/undo_progress.h"
#include "platform/atomic_file.h"
#include "platform/path.h"
#include "platform/translation.h"
#include "run/cycle_restorer.h"
#include "run/recovery.h"
#include "run/restorer.h"
#include "run/undone_logs.h"

namespace brindle {
namespace {

constexpr std::string_view leaves_folder = "the log is from elsewhere, and would move it to another folder";

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
  Undoing(const LogFile& log, const std::string& log_folder, UndoProgress& progress, const UndoReport& report,
          UndoResult& result)
      : log_(log),
        progress_(progress),
        report_(report),
        result_(result),
        places_(log, progress),
        restorer_(places_, progress.goes_on(), log_folder),
        cycle_restorer_(log, places_.cycles(), progress, restorer_) {}

  /// The log was undone and put away: what passed its names round has done so back, though the names do not tell.
  void was_put_away() { was_put_away_ = true; }
  /// Leaves alone what would change its folder.
  void stay_in_folders() { stays_in_folders_ = true; }

  void run(const JobControl& control) {
    ProgressThrottle throttle(control, log_.entries.size());
    cycle_restorer_.finish_stopped();
    auto cycle = places_.cycles().rbegin();
    for (std::size_t i = log_.entries.size(); i > 0; --i) {
      result_.cancelled = control.cancelled();
      if (result_.cancelled) break;
      const LogEntry& entry = log_.entries[i - 1];
      while (cycle != places_.cycles().rend() && cycle->first + cycle->count > i) ++cycle;
      if (cycle != places_.cycles().rend() && cycle->first + cycle->count == i && undo(*cycle)) {
        i = cycle->first + 1;
        throttle.step(result_.reached, [&] { return join_path(entry.source_folder, entry.source_name); });
        continue;
      }
      count(entry, undo(i - 1, entry));
      throttle.step(result_.reached, [&] { return join_path(entry.source_folder, entry.source_name); });
    }
    // The log may be on another disk, and must not go before the names are safe.
    if (const int error = restorer_.sync(); error != 0) {
      result_.error = translated("the disk did not take all of the old names ({}); undo again",
                                 translated(system_error_text(error)));
    }
    throttle.finish(result_.reached);
  }

 private:
  void count(const LogEntry& entry, UndoOutcome outcome) {
    ++result_.reached;
    if (outcome == UndoOutcome::moved || outcome == UndoOutcome::restored) ++result_.restored;
    if (outcome == UndoOutcome::already) ++result_.already;
    if (report_) report_(entry, outcome, reason_);
  }

  UndoOutcome undo(std::size_t number, const LogEntry& entry) {
    reason_ = entry.fault;
    if (reason_.empty() && stays_in_folders_ && entry.source_folder != entry.target_folder) reason_ = leaves_folder;
    if (!reason_.empty()) return UndoOutcome::left;
    const UndoMark before = progress_.get(number);
    if (before == UndoMark::restored && !restorer_.is_forth(entry, number)) return restored_before(before);
    const bool came_through = before == UndoMark::half && restorer_.settle_half_step(entry, number);
    progress_.set(number, came_through ? UndoMark::restored : UndoMark::begun);
    if (came_through) return restored_before(before);
    HalfMark half(progress_, number);
    reason_ = restorer_.restore(entry, number, half);
    const bool moved = reason_.empty();
    if (!moved && restorer_.is_back(entry, number)) reason_ = {};
    progress_.set(number, reason_.empty() ? UndoMark::restored : UndoMark::left);
    if (moved) return UndoOutcome::moved;
    return reason_.empty() ? restored_before(before) : UndoOutcome::left;
  }

  // False when the entries turn out to be each for itself.
  bool undo(const LogCycle& cycle) {
    using enum CycleRestorer::Outcome;
    const UndoMark before = progress_.get(cycle.first);
    const CycleRestorer::Outcome what = was_put_away_ ? restored : cycle_restorer_.restore(cycle);
    if (what == no_cycle) return false;
    for (std::size_t i = cycle.first + cycle.count; i > cycle.first; --i) {
      reason_ = what == left ? cycle_restorer_.reason(i - 1) : std::string_view();
      count(log_.entries[i - 1], what == moved  ? UndoOutcome::moved
                                 : what == left ? UndoOutcome::left
                                                : restored_before(before));
    }
    return true;
  }

  // Whose doing it is that an entry has its old name.
  UndoOutcome restored_before(UndoMark before) const {
    const bool by_undo = before != UndoMark::none && before != UndoMark::left;
    return by_undo && progress_.end_before() != UndoEnd::complete ? UndoOutcome::restored : UndoOutcome::already;
  }

  const LogFile& log_;
  UndoProgress& progress_;
  const UndoReport& report_;
  UndoResult& result_;
  EntryPlaces places_;
  Restorer restorer_;
  CycleRestorer cycle_restorer_;
  bool was_put_away_ = false;
  std::string_view reason_;  // why the entry at hand was left alone
  bool stays_in_folders_ = false;
};

// The room that the progress took may be all the disk had.
void put_away(const std::string& log_folder, UndoProgress& progress, UndoResult& result) {
  Result<std::string> place = put_undone_log_away(result.log_path, log_folder);
  if (place.status().error() == ENOSPC || place.status().error() == EDQUOT) {
    progress.remove();
    place = put_undone_log_away(result.log_path, log_folder);
  }
  result.put_away = place.ok();
  if (result.put_away) {
    progress.remove();
    result.log_path = *place;
  } else {
    progress.finish(UndoEnd::complete);
    result.error = place.reason();
  }
}

}  // namespace

UndoResult undoRenaming(const std::string& log_path, const JobControl& control, const UndoReport& report,
                        const UndoOptions& options) {
  const Result<LogFile> log = readLogFile(log_path);
  if (log.ok()) return undoRenaming(log_path, *log, control, report, options);
  UndoResult result;
  result.log_path = log_path;
  result.error = log.reason();
  return result;
}

UndoResult undoRenaming(const std::string& log_path, const LogFile& log, const JobControl& control,
                        const UndoReport& report, const UndoOptions& options) {
  UndoResult result;
  result.log_path = log_path;
  result.entries = log.entries.size();
  if (!options.log_folder.empty()) result.error = may_undo(recover(options.log_folder)).reason();
  UndoProgress progress;
  if (result.error.empty()) result.error = progress.open(log_path, log.checksum, log.entries.size()).reason();
  if (!result.error.empty()) return result;
  const std::string log_folder = options.log_folder.empty() ? split_path(log_path).folder : options.log_folder;
  Undoing undoing(log, log_folder, progress, report, result);
  if (!options.from_elsewhere && !is_own_log(log_path, log_folder)) undoing.stay_in_folders();
  if (is_put_away(log_path)) undoing.was_put_away();
  undoing.run(control);
  if (result.cancelled || !result.error.empty()) return result;
  if (result.left_alone() > 0) {
    progress.finish(UndoEnd::partial);
  } else {
    put_away(log_folder, progress, result);
  }
  return result;
}

}  // namespace brindle
