// Profiles: the settings as a record, in files and in the window.

#include <exception>
#include <utility>

#include "app/brindle_app_controller.h"
#include "platform/app_info.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "settings/profile_file.h"
#include "text/date_format.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

void tell_profile_failure(const Ports& ports, std::string_view title_key, std::string_view message_key,
                          const std::string& reason) {
  Alert alert;
  alert.title_key = title_key;
  alert.message_key = message_key;
  alert.title = localized(title_key);
  alert.message = localized(message_key);
  alert.informative_text = reason;
  alert.style = AlertStyle::critical;
  ports.alerts.show(alert);
}

// The version that wrote a record; "" when it does not say.
std::string version_of(const SettingsRecord& record) {
  const PropertyValue* value = record.find(u"appVersion");
  const auto* text = value ? value->get_if<std::u16string>() : nullptr;
  return text ? to_utf8(*text) : std::string();
}

}  // namespace

std::string BrindleAppController::window_title() const {
  if (currProfileFile_.empty()) return getAppTitle();
  const std::string_view name = std::string_view(currProfileFile_).substr(currProfileFile_.rfind('/') + 1);
  return getAppTitle(" - " + to_utf8(FileSystemItem::getDisplayFilePath(decode_file_name(name))));
}

void BrindleAppController::set_curr_profile(const std::string& path) {
  currProfileFile_ = path;
  tell(Changed::profile);
}

void BrindleAppController::forget_profile() {
  set_curr_profile("");
}

// Opening

void BrindleAppController::loadProfile() {
  if (defer([this] { loadProfile(); })) return;
  ports_.desktop.end_editing();
  OpenRequest request;
  request.title = localized("CHOOSEPROFILETITLE");
  request.folder = preferences_.defaultProfileFolderPath;
  request.extensions = {profile_extension};
  const std::vector<std::string> paths = ports_.chooser.choose(request);
  if (!paths.empty()) setCurrentSettings(paths.front());
}

void BrindleAppController::setCurrentSettings(const std::string& path) {
  if (defer([this, path] { setCurrentSettings(path); })) return;
  open_profile(path);
}

bool BrindleAppController::open_profile(const std::string& path) {
  const Result<SettingsRecord> record = read_profile_file(path);
  if (record.ok() && !isFileVersionMatch(version_of(*record))) {
    tell_profile_failure(ports_, "LOADPROFILETITLE", "PROFILEINCOMPATIBLE", path);
    return false;
  }
  isProfileLoading_ = true;
  const bool is_open = record.ok() && setSettings(*record);
  isProfileLoading_ = false;
  if (!is_open) {
    tell_profile_failure(ports_, "LOADPROFILETITLE", "PROFILELOADFAILED", record.reason());
    return false;
  }
  set_curr_profile(path);
  rules_.clear_selection();
  rules_.tabChanged(values().selectedTab);
  return true;
}

bool BrindleAppController::setSettings(const SettingsRecord& record) {
  if (state_.isExecuting) return false;
  bool is_applied = false;
  try {
    apply_record(record);
    is_applied = true;
  } catch (const std::exception& failure) {
    log_failure("setCurrentSettings", failure.what());
  }
  state_.isHasFilesForRenaming = false;
  update_state();
  tell(Changed::state | Changed::masks);
  return is_applied;
}

void BrindleAppController::apply_record(const SettingsRecord& record) {
  RenameSettings edited = values();
  const SettingsOutcome outcome = brindle::setSettings(edited, record);
  replace_settings(std::move(edited));
  if (outcome.refresh_replace_remove) replaceRemoveRemoveTypeChanged(values().replaceRemoveRemoveType);
  if (!state_.isExecuting) count_list();
  if (outcome.date_left_out && uses_custom_date(values())) tell_date_left_out(*outcome.date_left_out);
}

void BrindleAppController::tell_date_left_out(Date date) {
  constexpr std::u16string_view pattern = u"dd/MM/yyyy HH:mm:ss";
  Alert alert;
  alert.message_key = "DATELEFTOUT";
  alert.title = getAppTitle();
  alert.message = localized_format(alert.message_key, to_utf8(format_date(date, pattern)),
                                   to_utf8(format_date(values().dateTimeCustomDate, pattern)));
  ports_.alerts.show(alert);
}

// All of them, save that a list that the person keeps keeps its mode.
void BrindleAppController::replace_settings(RenameSettings settings) {
  switch_mode(settings.isFolders, Asks::always);
  set_mode(settings, values().isFolders);
  settings_.replace(std::move(settings));
}

// Saving

bool BrindleAppController::write_profile(const std::string& path) {
  const Status status = write_profile_file(path, getCurrentSettings(values()));
  if (!status.ok()) tell_profile_failure(ports_, "PROFILETITLE", "PROFILESAVEDFAILED", status.reason());
  return status.ok();
}

bool BrindleAppController::saveProfile() {
  ports_.desktop.end_editing();
  return currProfileFile_.empty() ? saveAsProfile() : write_profile(currProfileFile_);
}

bool BrindleAppController::saveAsProfile() {
  ports_.desktop.end_editing();
  SaveRequest request;
  request.title = localized("SAVEASPROFILETITLE");
  request.folder = preferences_.defaultProfileFolderPath;
  request.name = currProfileFile_.substr(currProfileFile_.rfind('/') + 1);
  request.extension = profile_extension;
  const std::optional<std::string> path = ports_.chooser.choose(request);
  if (!path || !write_profile(*path)) return false;
  set_curr_profile(*path);
  return true;
}

bool BrindleAppController::saveNewProfile(const std::string& path) {
  ports_.desktop.end_editing();
  const Status status = write_profile_file(path, getCurrentSettings(values()));
  if (!status.ok()) log_failure("saveNewProfile", status.reason());
  return status.ok();
}

// Before the open profile is left.
void BrindleAppController::save_left_profile() {
  if (currProfileFile_.empty() || !preferences_.automaticSaveCurrProfile) return;
  ports_.desktop.end_editing();
  saveProfile();
}

// Starting afresh

void BrindleAppController::loadEmptyProfile() {
  if (defer([this] { loadEmptyProfile(); })) return;
  save_left_profile();
  isCancelProcess_ = false;
  state_.isHasFilesForRenaming = false;
  RenameSettings empty;
  brindle::loadEmptyProfile(empty, now());
  replace_settings(std::move(empty));
  close_profile();
  rules_.clear_selection();
  rules_.tabChanged(values().selectedTab);
  update_state();
  tell(Changed::state | Changed::masks);
}

void BrindleAppController::loadDefaultProfile() {
  if (defer([this] { loadDefaultProfile(); })) return;
  save_left_profile();
  close_profile();
  applicationDidFinishLaunching();
}

void BrindleAppController::close_profile() {
  set_curr_profile("");
  defaults_.set(user_default::last_profile, u"");
  const Status status = defaults_.flush();
  if (!status.ok()) log_failure("flush", status.reason());
}

}  // namespace brindle
