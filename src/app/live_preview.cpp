// The preview that follows what is typed.

#include <algorithm>
#include <utility>

#include "app/preview_controller.h"
#include "methods/validation.h"

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

void PreviewController::settings_changed(const SettingsChange& change) {
  const bool is_other_method = change.contains("selectedTab");
  if (is_other_method && selected_method(values()) == Method::from_list) drop_live_names();
  if (wakes(change)) schedule(after_typing);
}

bool PreviewController::wakes(const SettingsChange& change) const {
  if (change.is_quiet || model_.state().item_count == 0 || !model_.live_preview().isLivePreviewEnabled) return false;
  if (change.isSettingsChanged && change.has_values) return true;
  // Another method takes over from the names of the last one, but not from names that were checked, typed or loaded.
  if (change.contains("selectedTab") && model_.names_made_with.is_live) return true;
  return selected_method(values()) != Method::from_list && changes_method(change, selected_method(values()));
}

// A list brings its names along: what the live preview made, or was about to make, is not among them.
void PreviewController::drop_live_names() {
  cancel_pending();
  WindowState& state = model_.state();
  if (state.is_quiet) jobs_.cancelProcess();
  if (state.isExecuting || !model_.names_made_with.is_live) return;
  model_.names_made_with.is_live = false;
  model_.files().reset_new_names(ItemStatus::none);
  state.isHasFilesForRenaming = false;
  model_.tell(Changed::names);
}

void PreviewController::remake() {
  schedule(after_typing);
}

void PreviewController::cancel_pending() {
  model_.ports().main_thread.cancel_timer(quickPreviewTimer_);
}

void PreviewController::schedule(std::chrono::milliseconds after) {
  if (model_.state().is_quiet) return jobs_.restart_quiet_job();
  cancel_pending();
  quickPreviewTimer_ = model_.ports().main_thread.start_timer(after, [this] { quickPreviewTimerMethod(); });
}

void PreviewController::quickPreviewTimerMethod() {
  // The names that a question is about stay as they are until it is answered.
  if (model_.is_asking()) return schedule(after_typing);
  if (!model_.state().isExecuting && !model_.files().empty()) quickPreview();
}

void PreviewController::quickPreview() {
  RenameSettings edited = values();
  const std::optional<Refusal> refusal = validate_and_normalise(edited);
  model_.commit_quietly(std::move(edited));
  model_.state().isRulePreview = false;
  model_.state().isHasFilesForRenaming = false;
  model_.names_made_with = {selected_method(values()), values().generalOptionIndex, true, model_.choices().permute};
  const auto plan = refusal ? nullptr : std::make_shared<RenamePlan>(values(), model_.now());
  const auto result = std::make_shared<PreviewResult>();
  const std::size_t limit = row_limit(model_.live_preview());
  JobCall call;
  call.job = Job::preview;
  call.quiet = true;
  call.work = [this, plan, result, limit](const JobControl& control) {
    if (!plan) return model_.files().reset_new_names(ItemStatus::no_new_name);
    *result = brindle::quickPreview(model_.files(), *plan, limit, control, model_.choices());
  };
  call.finished = [this, plan, result] {
    if (plan) names_made(*plan);
    // One that another command broke off is made again.
    model_.state().isHasFilesForRenaming = result->isHasFilesForRenaming && !result->cancelled;
  };
  jobs_.run(std::move(call), is_long(model_.files(), plan.get(), limit));
}

void PreviewController::setLivePreviewPreferences(const LivePreviewPreferences& preferences) {
  model_.live_preview() = preferences;
  UserDefaults& defaults = model_.user_defaults();
  defaults.set(user_default::live_preview, preferences.isLivePreviewEnabled);
  defaults.set(user_default::live_preview_all_files, preferences.isLivePreviewAllFiles);
  defaults.set(user_default::live_preview_files_limit, preferences.livePreviewFilesLimit);
  model_.save_user_defaults();
  model_.tell(Changed::preferences);
  cancel_pending();
  if (preferences.isLivePreviewEnabled) schedule(after_preferences);
}

}  // namespace brindle
