#pragma once

// The jobs of a window (load, preview, rename, undo, export, a long sort), and what waits for them.
//
// One runs at a time, through the worker port; while it does, the list belongs to it. Everything here is called on the
// main thread but a job's work.

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "app/window_model.h"
#include "platform/job.h"

namespace brindle {

/// What the jobs need of their owner.
class JobsOwner {
 public:
  virtual ~JobsOwner() = default;
  /// A job that is not quiet begins or has ended.
  virtual void set_executing(bool executing) = 0;
  /// A live preview was broken off for something that is over now.
  virtual void remake_live_preview() = 0;
};

struct JobCall {
  Job job = Job::none;
  bool quiet = false;  ///< no labels, no progress, no time; makes way for every command
  /// On the job's thread. An exception ends it, and is logged and told.
  std::function<void(const JobControl&)> work{};
  /// Before the flags fall, also after an exception: brings the results into the state.
  std::function<void()> finished{};
  /// When they have fallen: what asks and tells, or begins the next job.
  std::function<void()> afterwards{};
};

class JobsController {
 public:
  JobsController(MutableWindowModel& model, JobsOwner& owner);

  /// Sets the flags and labels around the work. False, with nothing done, while another job runs.
  bool run_job(JobCall call);
  /// The same for work of some ten milliseconds, at once and without labels. No job may be running.
  void run_at_once(const JobCall& call);
  bool run(JobCall call, bool is_long);

  /// What becomes of the live preview that a command has broken off.
  enum class BrokenOff : std::uint8_t { made_again, left };
  /// Runs a command when no job runs: at once, or when a quiet job, which is cancelled for it, has ended. While any
  /// other runs it is dropped. Of several that wait for one job the last is run.
  void command(std::function<void()> command, BrokenOff preview = BrokenOff::made_again);
  /// Runs what shall not be lost (paths that somebody has handed over, and believes to be listed): at once, or behind
  /// the job, in the order they came. A quiet job is cancelled.
  void request(std::function<void()> request);
  /// Whether no job runs. A quiet one is cancelled: ask again when it has ended.
  bool make_way();
  void cancelProcess();
  /// Cancels a quiet job; its preview is made again unless something else follows.
  void restart_quiet_job();
  /// This preview shows what the broken off one was about to.
  void forget_broken_off_preview() { is_preview_broken_off_ = false; }

  void setStartTime();
  void showLastActionTimeTaken(std::string_view label_key);

 private:
  class ProgressRelay;

  void job_finished(const JobCall& call, const std::string& failure);
  void show_progress();
  void serve_requests();

  MutableWindowModel& model_;
  JobsOwner& owner_;
  std::atomic<bool> isCancelProcess_{false};
  std::function<void()> command_;               // waits for a quiet job to end
  std::deque<std::function<void()>> requests_;  // wait for the end of any
  bool is_preview_broken_off_ = false;
  Date startTime_;
  std::shared_ptr<ProgressRelay> progress_;
};

}  // namespace brindle
