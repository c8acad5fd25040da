// Start and quit: what is kept between runs of the program.

#include <array>
#include <utility>

#include "app/brindle_app_controller.h"
#include "log/undo_progress.h"
#include "methods/rename_operation.h"
#include "methods/rule_file.h"
#include "platform/app_info.h"
#include "platform/data_folders.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "plist/keyed_archive.h"
#include "run/recovery.h"
#include "settings/meta_data_field.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::string path_of(std::u16string_view text) {
  std::string path;
  return encode_path(text, path) ? path : std::string();
}

std::string name_of(const std::string& path) {
  return in_sentence(decode_file_name(std::string_view(path).substr(path.rfind('/') + 1)));
}

std::string_view bytes_of(const PropertyValue::Data& data) {
  return {reinterpret_cast<const char*>(data.data()), data.size()};
}

}  // namespace

bool BrindleAppController::awakeFromNib() {
  set_failure_format(decode_file_name(localized("UNABLETOGENERATENEWFILENAMEERROR")));
  if (!make_data_folders()) return false;
  preferences_ = default_preferences();
  if (!loadPreferences(preferences_)) {
    const Status status = savePreferences(preferences_);
    if (!status.ok()) log_failure("savePreferences", status.reason());
  }
  read_defaults();
  RenameSettings empty;
  brindle::loadEmptyProfile(empty, now());
  commit_quietly(empty);
  update_state();
  tell(Changed::state | Changed::preferences | Changed::recent_items);
  finish_interrupted_runs();
  return true;
}

bool BrindleAppController::make_data_folders() {
  for (const std::string_view name : {"", "Logs", "Profiles", "Rules"}) {
    const Status status = createApplicationUsersFolder(name);
    if (status.ok()) continue;
    Alert alert;
    alert.title_key = "APPLICATIONINITTITLE";
    alert.message_key = "APPLICATIONCREATEFOLDERFAILED";
    alert.title = localized(alert.title_key);
    alert.message = localized(alert.message_key);
    alert.informative_text = status.reason();
    alert.style = AlertStyle::critical;
    ports_.alerts.show(alert);
    ports_.desktop.quit();
    return false;
  }
  return true;
}

void BrindleAppController::read_defaults() {
  if (const PropertyValue* recent = defaults_.find(user_default::recent_items)) recent_.from_property_value(*recent);
  live_preview_ = {};
  live_preview_.isLivePreviewEnabled = defaults_.boolean(user_default::live_preview, true);
  live_preview_.isLivePreviewAllFiles = defaults_.boolean(user_default::live_preview_all_files, false);
  live_preview_.livePreviewFilesLimit = defaults_.text(user_default::live_preview_files_limit, u"2500");
  include_hidden_ = defaults_.boolean(user_default::include_hidden, false);
}

void BrindleAppController::finish_interrupted_runs() {
  const RecoveryResult result = recover(preferences_.defaultLogFolderPath);
  for (const std::string& problem : result.problems) waiting_renamings_ += problem + "\n";
  for (const std::string& journal : result.set_aside) lost_renamings_ += journal + "\n";
  for (const RecoveredRun& run : result.runs) {
    if (run.log_path.empty()) continue;
    interrupted_renamings_ +=
        name_of(run.log_path) + ": " + localized_format("TOTALNOSRENAMEDITEMSFOUND", run.renamed) + "\n";
  }
  for (const BrokenOffUndo& undo : broken_off_undos(preferences_.defaultLogFolderPath)) {
    interrupted_undos_ +=
        name_of(undo.log_path) + ": " + localized_format("UNDOBROKENOFF", undo.restored, undo.entries) + "\n";
  }
}

bool BrindleAppController::tell_interrupted_runs() {
  bool wanted = false;
  const auto tell_of = [this, &wanted](std::string_view key, std::string logs) {
    if (logs.empty()) return;
    logs.pop_back();
    Alert alert;
    alert.message_key = key;
    alert.title = getAppTitle();
    alert.message = localized(key);
    alert.informative_text = std::move(logs);
    alert.buttons = {"SHOWLOGS", "NOTNOW"};
    alert.style = AlertStyle::informational;
    wanted = ports_.alerts.show(alert) == 0 || wanted;
  };
  tell_of("INTERRUPTEDRUNFINISHED", std::exchange(interrupted_renamings_, {}));
  tell_of("INTERRUPTEDRUNWAITS", std::exchange(waiting_renamings_, {}));
  tell_of("INTERRUPTEDRUNLOST", std::exchange(lost_renamings_, {}));
  tell_of("INTERRUPTEDUNDOFOUND", std::exchange(interrupted_undos_, {}));
  return wanted;
}

void BrindleAppController::applicationDidFinishLaunching() {
  if (state_.isExecuting) return;
  const std::string profile = path_of(defaults_.text(user_default::last_profile, u""));
  restore_rules();
  // A profile that cannot be opened stays closed: saved at quit, it would be overwritten by other settings.
  if (!profile.empty() && open_profile(profile)) return;
  set_curr_profile("");
  const PropertyValue* record = defaults_.find(user_default::settings);
  const auto* dictionary = record ? record->get_if<PropertyDictionary>() : nullptr;
  if (dictionary) setSettings(SettingsRecord(*dictionary));
}

void BrindleAppController::restore_rules() {
  const PropertyValue* stored = defaults_.find(user_default::last_rule);
  if (!stored) return;
  const auto* data = stored->get_if<PropertyValue::Data>();
  const auto chain = data ? unarchive_value(bytes_of(*data), meta_data_field_class) : std::nullopt;
  Result<std::vector<Rule>> rules =
      chain ? rules_from_property_value(*chain, MethodNames::as_read) : Status("it is no keyed archive");
  rules_.setRules(rules.ok() ? *std::move(rules) : std::vector<Rule>());
  if (rules.ok()) return;
  defaults_.remove(user_default::last_rule);
  const Status status = defaults_.flush();
  if (!status.ok()) log_failure("flush", status.reason());
}

bool BrindleAppController::applicationShouldTerminate() {
  // A job that renames is never broken off behind a person's back: it can be cancelled, and then the program ended. A
  // quiet one stops at once.
  if (defer({})) return false;
  ports_.desktop.end_editing();
  save_left_profile();
  keep_session();
  return true;
}

void BrindleAppController::keep_session() {
  defaults_.set(user_default::settings, getCurrentSettings(values()));
  defaults_.set(user_default::recent_items, recent_.to_property_value());
  defaults_.set(user_default::last_profile, decode_file_name(currProfileFile_));
  defaults_.set(user_default::last_rule, archive_value(rules_to_property_value(rules_.rules())));
  const Status status = defaults_.flush();
  if (!status.ok()) log_failure("flush", status.reason());
}

}  // namespace brindle
