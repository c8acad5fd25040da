#include "app/jobs_controller.h"

#include <array>
#include <exception>
#include <mutex>
#include <utility>

#include "platform/file_name.h"
#include "platform/message_log.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

struct JobTexts {
  std::string_view label;       // status label, a format of "files" or "folders"
  std::string_view time;        // label of the time it took
  std::string_view found_file;  // count label while it runs
  std::string_view found_folder;
  std::string_view failure;  // log line of an exception, before its reason
};

// By Job.
constexpr std::array<JobTexts, 8> job_texts = {{
    {"", "", "", "", "Error in job : "},
    {"LOADINGMESSAGE", "LOADINGTIME", "TOTALFILESFOUND", "TOTALFOLDERSFOUND", "addFilesToList Error : "},
    {"GENERATINGPREVIEWPLEASEWAIT", "PREVIEWTIME", "", "", "Error in preview : "},
    {"RENAMINGITEMSPLEASEWAIT", "RENAMINGTIME", "TOTALFILESRENAMED", "TOTALFOLDERSRENAMED", "Error "},
    {"UNDOINGITEMS", "", "", "", "Error in undo : "},
    {"", "", "", "", "Error in export : "},
    {"", "", "", "", "Error in sorting : "},
    {"", "", "", "", "Error in removing : "},
}};

const JobTexts& texts_of(Job job) {
  return job_texts[static_cast<std::size_t>(job)];
}

// Runs `work`, and says what it threw; "" when it came to its end.
std::string run_guarded(const std::function<void(const JobControl&)>& work, const JobControl& control) {
  try {
    work(control);
    return {};
  } catch (const std::exception& failure) {
    return failure.what();
  } catch (...) {
    return "unknown error";
  }
}

}  // namespace

/// Keeps the newest report and has at most one call waiting on the main thread, so that a slow view neither holds a job
/// up nor lets a queue grow.
class JobsController::ProgressRelay final : public ProgressSink, public std::enable_shared_from_this<ProgressRelay> {
 public:
  struct Report {
    std::size_t done = 0;
    std::size_t total = 0;
    std::string path;
  };

  ProgressRelay(MainThreadPort& main_thread, std::function<void()> show)
      : main_thread_(main_thread), show_(std::move(show)) {}

  // On the job's thread.
  void report(const Progress& progress) override {
    {
      const std::lock_guard lock(mutex_);
      newest_.done = progress.done;
      newest_.total = progress.total;
      newest_.path.assign(progress.path);
      if (std::exchange(is_posted_, true)) return;
    }
    main_thread_.post([relay = weak_from_this()] {
      if (const auto here = relay.lock()) here->show_();
    });
  }

  // On the main thread.
  Report take() {
    const std::lock_guard lock(mutex_);
    is_posted_ = false;
    return newest_;
  }

 private:
  MainThreadPort& main_thread_;
  std::function<void()> show_;
  std::mutex mutex_;
  Report newest_;
  bool is_posted_ = false;
};

JobsController::JobsController(MutableWindowModel& model, JobsOwner& owner) : model_(model), owner_(owner) {
  progress_ = std::make_shared<ProgressRelay>(model_.ports().main_thread, [this] { show_progress(); });
}

bool JobsController::run(JobCall call, bool is_long) {
  if (is_long) return run_job(std::move(call));
  run_at_once(call);
  return true;
}

void JobsController::run_at_once(const JobCall& call) {
  call.work({});
  if (call.finished) call.finished();
  model_.tell(Changed::rows | Changed::names | Changed::state);
  if (call.afterwards) call.afterwards();
}

bool JobsController::run_job(JobCall call) {
  WindowState& state = model_.state();
  if (state.isExecuting) return false;
  isCancelProcess_ = false;
  model_.update_state();
  state.job = call.job;
  state.isExecuting = true;
  state.is_quiet = call.quiet;
  state.done = state.total = 0;
  if (!call.quiet) {
    const std::string_view key = texts_of(call.job).label;
    const std::string_view what = model_.values().isFolders ? "FOLDERS" : "FILES";
    state.status_label = key.empty() ? "" : localized_format(key, localized(what));
    setStartTime();
    owner_.set_executing(true);
  }
  model_.tell(Changed::state);
  const auto shared = std::make_shared<const JobCall>(std::move(call));
  const auto failure = std::make_shared<std::string>();
  const JobControl control{&isCancelProcess_, shared->quiet ? nullptr : progress_.get()};
  model_.ports().worker.run([shared, failure, control] { *failure = run_guarded(shared->work, control); },
                            [this, shared, failure, alive = std::weak_ptr(progress_)] {
                              if (alive.lock()) job_finished(*shared, *failure);
                            });
  return true;
}

void JobsController::job_finished(const JobCall& call, const std::string& failure) {
  const JobTexts& texts = texts_of(call.job);
  if (!failure.empty()) log_line(std::string(texts.failure) + failure);
  report_repeated();
  if (call.finished) call.finished();
  WindowState& state = model_.state();
  state.job = Job::none;
  state.isExecuting = state.is_quiet = false;
  if (!call.quiet) {
    state.status_label.clear();
    if (!texts.time.empty()) showLastActionTimeTaken(texts.time);
    owner_.set_executing(false);
  }
  model_.tell(Changed::rows | Changed::names | Changed::state);
  if (!failure.empty()) show_alert(model_.ports(), make_alert("", "JOBFAILED"), AlertStyle::critical, failure);
  if (call.afterwards) call.afterwards();
  if (const auto command = std::exchange(command_, nullptr)) command();
  serve_requests();
  if (std::exchange(is_preview_broken_off_, false)) owner_.remake_live_preview();
}

void JobsController::show_progress() {
  const ProgressRelay::Report report = progress_->take();
  WindowState& state = model_.state();
  if (!state.is_busy()) return;
  const JobTexts& texts = texts_of(state.job);
  state.done = report.done;
  state.total = report.total;
  if (!report.path.empty()) {
    state.status_label = to_utf8(FileSystemItem::getDisplayFilePath(decode_file_name(report.path)));
  }
  const std::string_view count_key = model_.values().isFolders ? texts.found_folder : texts.found_file;
  if (!count_key.empty()) state.count_label = localized_format(count_key, report.done);
  model_.tell(Changed::state);
}

void JobsController::command(std::function<void()> command, BrokenOff preview) {
  const WindowState& state = model_.state();
  if (!state.isExecuting) return command();
  if (!state.is_quiet) return;
  isCancelProcess_ = true;
  is_preview_broken_off_ = is_preview_broken_off_ || preview == BrokenOff::made_again;
  command_ = std::move(command);
}

void JobsController::request(std::function<void()> request) {
  if (!model_.state().isExecuting) return request();
  requests_.push_back(std::move(request));
  if (model_.state().is_quiet) return restart_quiet_job();
  model_.ports().desktop.show_tooltip(TooltipAnchor::file_list, "LOADWAITS", localized("LOADWAITS"));
}

bool JobsController::make_way() {
  restart_quiet_job();
  return !model_.state().isExecuting;
}

void JobsController::restart_quiet_job() {
  if (!model_.state().is_quiet) return;
  isCancelProcess_ = true;
  is_preview_broken_off_ = true;
}

// A request that begins a job leaves the others to its end.
void JobsController::serve_requests() {
  while (!requests_.empty() && !model_.state().isExecuting) {
    const auto request = std::move(requests_.front());
    requests_.pop_front();
    request();
  }
}

void JobsController::cancelProcess() {
  isCancelProcess_ = true;
}

void JobsController::setStartTime() {
  startTime_ = model_.now();
}

void JobsController::showLastActionTimeTaken(std::string_view label_key) {
  try {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(model_.now() - startTime_).count();
    model_.state().lastActionTimeTaken = localized_format("TIMETAKEN", localized(label_key), seconds);
    model_.tell(Changed::state);
  } catch (const std::exception& failure) {
    log_failure("showLastActionTimeTaken", failure.what());
  }
}

}  // namespace brindle
