// The controller itself, its observers, and how its jobs run.

#include <array>
#include <exception>
#include <utility>

#include "app/brindle_app_controller.h"
#include "app/progress_relay.h"
#include "platform/app_info.h"
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

BrindleAppController::BrindleAppController(const Ports& ports, std::function<Date()> clock)
    : ports_(ports), clock_(clock ? std::move(clock) : current_time), rules_(ports, *this) {
  progress_ = std::make_shared<ProgressRelay>(ports_.main_thread, [this] { show_progress(); });
  // Told on the cache's thread.
  photo_fields_ = std::make_unique<PhotoFieldsCache>([this, alive = std::weak_ptr(progress_)] {
    ports_.main_thread.post([this, alive] {
      if (alive.lock()) tell(Changed::names);
    });
  });
  settings_.add_observer([this](const SettingsChange& change) { settings_changed(change); });
}

BrindleAppController::~BrindleAppController() {
  ports_.main_thread.cancel_timer(quickPreviewTimer_);
  ports_.main_thread.cancel_timer(previewRuleTimer_);
  ports_.main_thread.cancel_timer(loadFilesTimer_);
}

std::uint32_t BrindleAppController::add_observer(Observer observer) {
  observers_.emplace_back(++last_observer_, std::move(observer));
  return last_observer_;
}

void BrindleAppController::remove_observer(std::uint32_t id) {
  std::erase_if(observers_, [id](const auto& entry) { return entry.first == id; });
}

void BrindleAppController::tell(ChangedSet changed) {
  const auto observers = observers_;  // one may add or remove observers, itself included
  for (const auto& [id, observer] : observers) {
    const bool is_there = std::ranges::any_of(observers_, [id = id](const auto& entry) { return entry.first == id; });
    if (is_there) observer(changed);
  }
}

// What follows from the rest of the state.
void BrindleAppController::update_state() {
  if (!state_.isExecuting) state_.item_count = files_.size();
  const bool has_items = state_.item_count > 0;
  const bool is_idle = !state_.isExecuting || state_.is_quiet;
  state_.preview_enabled = is_idle && has_items && selected_method(values()) != Method::from_list;
  state_.rename_enabled =
      !state_.isExecuting && has_items && state_.isHasFilesForRenaming && files_.renameable_count() > 0;
  state_.shows_empty_hint = !has_items;
}

// What is said of a list that has other items now.
void BrindleAppController::count_list() {
  state_.isHasFilesForRenaming = false;
  state_.count_label =
      localized_format(values().isFolders ? "TOTALFOLDERSSELECTED" : "TOTALFILESSELECTED", files_.size());
}

void BrindleAppController::list_was_changed() {
  count_list();
  update_state();
  tell(Changed::rows | Changed::names | Changed::state);
}

bool BrindleAppController::run_job(Job job, std::function<void(const JobControl&)> work, std::function<void()> finished,
                                   std::function<void()> afterwards) {
  JobCall call;
  call.job = job;
  call.work = std::move(work);
  call.finished = std::move(finished);
  call.afterwards = std::move(afterwards);
  return start_job(std::move(call));
}

bool BrindleAppController::start_job(JobCall call) {
  if (state_.isExecuting) return false;
  isCancelProcess_ = false;
  update_state();
  state_.job = call.job;
  state_.isExecuting = true;
  state_.is_quiet = call.quiet;
  state_.done = state_.total = 0;
  if (!call.quiet) {
    const std::string_view key = texts_of(call.job).label;
    state_.status_label = key.empty() ? "" : localized_format(key, localized(values().isFolders ? "FOLDERS" : "FILES"));
    setStartTime();
    rules_.setIsExecuting(true);
  }
  update_state();
  tell(Changed::state);
  const auto shared = std::make_shared<const JobCall>(std::move(call));
  const auto failure = std::make_shared<std::string>();
  const JobControl control{&isCancelProcess_, shared->quiet ? nullptr : progress_.get()};
  ports_.worker.run([shared, failure, control] { *failure = run_guarded(shared->work, control); },
                    [this, shared, failure, alive = std::weak_ptr(progress_)] {
                      if (alive.lock()) job_finished(*shared, *failure);
                    });
  return true;
}

void BrindleAppController::job_finished(const JobCall& call, const std::string& failure) {
  const JobTexts& texts = texts_of(call.job);
  if (!failure.empty()) log_line(std::string(texts.failure) + failure);
  report_repeated();
  if (call.finished) call.finished();
  state_.job = Job::none;
  state_.isExecuting = state_.is_quiet = false;
  if (!call.quiet) {
    state_.status_label.clear();
    if (!texts.time.empty()) showLastActionTimeTaken(texts.time);
    rules_.setIsExecuting(false);
  }
  update_state();
  tell(Changed::rows | Changed::names | Changed::state);
  if (!failure.empty()) {
    Alert alert;
    alert.message_key = "JOBFAILED";
    alert.title = getAppTitle();
    alert.message = localized("JOBFAILED");
    alert.informative_text = failure;
    alert.style = AlertStyle::critical;
    ports_.alerts.show(alert);
  }
  if (call.afterwards) call.afterwards();
  if (const auto command = std::exchange(deferred_, nullptr)) command();
  serve_requests();
  if (std::exchange(quick_preview_is_stale_, false)) schedule_quick_preview(std::chrono::milliseconds(400));
}

void BrindleAppController::show_progress() {
  const ProgressRelay::Report report = progress_->take();
  if (!state_.isExecuting || state_.is_quiet) return;
  const JobTexts& texts = texts_of(state_.job);
  state_.done = report.done;
  state_.total = report.total;
  if (!report.path.empty()) {
    state_.status_label = to_utf8(FileSystemItem::getDisplayFilePath(decode_file_name(report.path)));
  }
  const std::string_view count_key = values().isFolders ? texts.found_folder : texts.found_file;
  if (!count_key.empty()) state_.count_label = localized_format(count_key, report.done);
  tell(Changed::state);
}

// Whether a command has to wait, or to give up: true while a job runs. A quiet job is cancelled, and the command runs
// when it has ended.
bool BrindleAppController::defer(std::function<void()> command) {
  if (!state_.isExecuting) return false;
  if (state_.is_quiet) {
    isCancelProcess_ = true;
    quick_preview_is_stale_ = true;
    deferred_ = std::move(command);
  }
  return true;
}

// The same for paths that somebody has handed over, and believes to be listed: they wait for every job.
bool BrindleAppController::put_off(std::function<void()> request) {
  if (!state_.isExecuting) return false;
  requests_.push_back(std::move(request));
  if (!state_.is_quiet) {
    ports_.desktop.show_tooltip(TooltipAnchor::file_list, "LOADWAITS", localized("LOADWAITS"));
  } else {
    isCancelProcess_ = true;
    quick_preview_is_stale_ = true;
  }
  return true;
}

// A request that begins a job leaves the others to its end.
void BrindleAppController::serve_requests() {
  while (!requests_.empty() && !state_.isExecuting) {
    const auto request = std::move(requests_.front());
    requests_.pop_front();
    request();
  }
}

void BrindleAppController::cancelProcess() {
  isCancelProcess_ = true;
}

void BrindleAppController::setStartTime() {
  startTime_ = now();
}

void BrindleAppController::showLastActionTimeTaken(std::string_view label_key) {
  try {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now() - startTime_).count();
    state_.lastActionTimeTaken = localized_format("TIMETAKEN", localized(label_key), seconds);
    tell(Changed::state);
  } catch (const std::exception& failure) {
    log_failure("showLastActionTimeTaken", failure.what());
  }
}

}  // namespace brindle
