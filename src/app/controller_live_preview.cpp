// The preview that follows what is typed.

#include <algorithm>
#include <utility>

#include "app/brindle_app_controller.h"
#include "methods/rename_plan.h"
#include "methods/validation.h"
#include "platform/message_log.h"

namespace brindle {
namespace {

constexpr std::chrono::milliseconds after_typing{400};
constexpr std::chrono::milliseconds after_preferences{100};
// Naming this many rows takes some ten milliseconds; more would make typing halt, and becomes a quiet job.
constexpr std::size_t most_rows_named_at_once = 20'000;

// 0 for all. What is no number counts as 0 items, which no count ever equals.
std::size_t row_limit(const LivePreviewPreferences& preferences) {
  if (preferences.isLivePreviewAllFiles) return 0;
  return static_cast<std::size_t>(std::max(0, integer_value(preferences.livePreviewFilesLimit)));
}

// Forgetting the names of rows is quicker than naming them.
constexpr std::size_t most_rows_reset_at_once = 200'000;

// Whether naming so many rows (none without a plan, and 0 for all) would make typing halt.
bool is_long(const FileList& files, const RenamePlan* plan, std::size_t limit) {
  if (files.rows_to_reset(ItemStatus::no_new_name) > most_rows_reset_at_once) return true;
  if (plan == nullptr) return false;
  const std::size_t named = limit == 0 ? files.size() : std::min(limit, files.size());
  const std::size_t sorted = plan->resets_on_folder() ? files.size() : 0;
  return std::max(named, sorted) > most_rows_named_at_once || plan->reads_files();
}

// Beyond the keys of the change signal, an option of the method shown: what is seen in the list is what is chosen.
bool changes_method(const SettingsChange& change, std::optional<Method> method) {
  if (!method) return false;
  return std::ranges::any_of(settings_table(), [&](const SettingRow& row) {
    return change.keys[setting_index(row)] && row.method == method && row.change == SettingChange::quiet;
  });
}

}  // namespace

void BrindleAppController::settings_changed(const SettingsChange& change) {
  if (change.contains("selectedTab")) rules_.tabChanged(values().selectedTab);
  rebuild_masks(change);
  const bool makes_no_names = selected_method(values()) == Method::from_list;
  if (change.contains("selectedTab") && makes_no_names) drop_live_names();
  // Another method takes over from the names of the last one, but not from names that were checked, typed or loaded.
  const bool takes_over = change.contains("selectedTab") && names_made_with_.is_live;
  const bool counts = change.isSettingsChanged && change.has_values;
  const bool wakes = !isProfileLoading_ &&
                     (counts || takes_over || (!makes_no_names && changes_method(change, selected_method(values()))));
  if (wakes && state_.item_count > 0 && live_preview_.isLivePreviewEnabled) schedule_quick_preview(after_typing);
  settings_.clear_settings_changed();
  update_state();
  tell(Changed::state);
}

// A list brings its names along: what the live preview made, or was about to make, is not among them.
void BrindleAppController::drop_live_names() {
  ports_.main_thread.cancel_timer(quickPreviewTimer_);
  if (state_.is_quiet) isCancelProcess_ = true;
  if (state_.isExecuting || !names_made_with_.is_live) return;
  names_made_with_.is_live = false;
  files_.reset_new_names(ItemStatus::none);
  state_.isHasFilesForRenaming = false;
  tell(Changed::names);
}

void BrindleAppController::schedule_quick_preview(std::chrono::milliseconds after) {
  if (state_.is_quiet) {
    isCancelProcess_ = true;
    quick_preview_is_stale_ = true;
    return;
  }
  ports_.main_thread.cancel_timer(quickPreviewTimer_);
  quickPreviewTimer_ = ports_.main_thread.start_timer(after, [this] { quickPreviewTimerMethod(); });
}

void BrindleAppController::quickPreviewTimerMethod() {
  // The names that a question is about stay as they are until it is answered.
  if (is_asking_) return schedule_quick_preview(after_typing);
  if (!state_.isExecuting && !files_.empty()) quickPreview();
}

// Writes settings without waking the live preview.
void BrindleAppController::commit_quietly(const RenameSettings& edited) {
  const bool was_loading = std::exchange(isProfileLoading_, true);
  settings_.replace(edited);
  isProfileLoading_ = was_loading;
}

void BrindleAppController::quickPreview() {
  RenameSettings edited = values();
  const std::optional<Refusal> refusal = validate_and_normalise(edited);
  commit_quietly(edited);
  state_.isRulePreview = false;
  state_.isHasFilesForRenaming = false;
  names_made_with_ = {selected_method(values()), values().generalOptionIndex, true};
  const auto plan = refusal ? nullptr : std::make_shared<RenamePlan>(values(), now());
  const auto result = std::make_shared<PreviewResult>();
  const std::size_t limit = row_limit(live_preview_);
  const auto work = [this, plan, result, limit](const JobControl& control) {
    if (!plan) return files_.reset_new_names(ItemStatus::no_new_name);
    *result = brindle::quickPreview(files_, *plan, limit, control);
  };
  const auto finished = [this, plan, result] {
    if (plan && plan->resets_on_folder()) sorted_column_ = "fileLocation", sorted_ascending_ = true;
    show_quick_preview(*result);
  };
  if (is_long(files_, plan.get(), limit)) {
    JobCall call;
    call.job = Job::preview;
    call.quiet = true;
    call.work = work;
    call.finished = finished;
    start_job(std::move(call));
  } else {
    work({});
    finished();
  }
}

void BrindleAppController::show_quick_preview(const PreviewResult& result) {
  // One that another command broke off is made again.
  state_.isHasFilesForRenaming = result.isHasFilesForRenaming && !result.cancelled;
  update_state();
  if (!state_.isExecuting) tell(Changed::rows | Changed::names | Changed::state);
}

void BrindleAppController::setLivePreviewPreferences(const LivePreviewPreferences& preferences) {
  live_preview_ = preferences;
  defaults_.set(user_default::live_preview, preferences.isLivePreviewEnabled);
  defaults_.set(user_default::live_preview_all_files, preferences.isLivePreviewAllFiles);
  defaults_.set(user_default::live_preview_files_limit, preferences.livePreviewFilesLimit);
  const Status status = defaults_.flush();
  if (!status.ok()) log_failure("flush", status.reason());
  tell(Changed::preferences);
  ports_.main_thread.cancel_timer(quickPreviewTimer_);
  if (preferences.isLivePreviewEnabled) schedule_quick_preview(after_preferences);
}

}  // namespace brindle
