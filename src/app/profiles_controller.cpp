#include "app/profiles_controller.h"

#include <exception>
#include <utility>

#include "platform/app_info.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "settings/profile_file.h"
#include "text/date_format.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

// The version that wrote a record; "" when it does not say.
std::string version_of(const SettingsRecord& record) {
  const PropertyValue* value = record.find(u"appVersion");
  const auto* text = value ? value->get_if<std::u16string>() : nullptr;
  return text ? to_utf8(*text) : std::string();
}

}  // namespace

std::string ProfilesController::window_title() const {
  if (currProfileFile_.empty()) return getAppTitle();
  const std::string_view name = std::string_view(currProfileFile_).substr(currProfileFile_.rfind('/') + 1);
  return getAppTitle(" - " + to_utf8(FileSystemItem::getDisplayFilePath(decode_file_name(name))));
}

void ProfilesController::set_curr_profile(const std::string& path) {
  currProfileFile_ = path;
  model_.tell(Changed::profile);
}

void ProfilesController::forget_profile() {
  set_curr_profile("");
}

// Opening

void ProfilesController::loadProfile() {
  jobs_.command([this] {
    desktop().end_editing();
    OpenRequest request;
    request.title = localized("CHOOSEPROFILETITLE");
    request.folder = model_.preferences().defaultProfileFolderPath;
    request.extensions = {profile_extension};
    const std::vector<std::string> paths = model_.ports().chooser.choose(request);
    if (!paths.empty()) setCurrentSettings(paths.front());
  });
}

void ProfilesController::setCurrentSettings(const std::string& path) {
  jobs_.command([this, path] { open_profile(path); });
}

bool ProfilesController::open_profile(const std::string& path) {
  const Result<SettingsRecord> record = read_profile_file(path);
  const auto refuse = [this](std::string_view key, const std::string& reason) {
    show_alert(model_.ports(), make_alert("LOADPROFILETITLE", key), AlertStyle::critical, reason);
    return false;
  };
  if (record.ok() && !isFileVersionMatch(version_of(*record))) return refuse("PROFILEINCOMPATIBLE", path);
  if (!record.ok() || !show_quietly(*record)) return refuse("PROFILELOADFAILED", record.reason());
  // A profile that makes no choices leaves those of the window.
  if (const RunChoices choices = choices_in(*record); choices != RunChoices()) model_.choices() = choices;
  set_curr_profile(path);
  start_with_method();
  return true;
}

bool ProfilesController::show_quietly(const SettingsRecord& record) {
  const SettingsStore::Quiet quiet(model_.settings());
  return setSettings(record);
}

void ProfilesController::start_with_method() {
  rules_.clear_selection();
  rules_.tabChanged(selected_method(values()));
}

bool ProfilesController::setSettings(const SettingsRecord& record) {
  if (model_.state().isExecuting) return false;
  bool is_applied = false;
  try {
    apply_record(record);
    is_applied = true;
  } catch (const std::exception& failure) {
    log_failure("setCurrentSettings", failure.what());
  }
  model_.state().isHasFilesForRenaming = false;
  model_.tell(Changed::state | Changed::masks);
  return is_applied;
}

void ProfilesController::apply_record(const SettingsRecord& record) {
  RenameSettings edited = values();
  const SettingsOutcome outcome = brindle::setSettings(edited, record);
  replace_settings(std::move(edited));
  if (!model_.state().isExecuting) model_.count_list();
  if (outcome.date_left_out && uses_custom_date(values())) tell_date_left_out(*outcome.date_left_out);
}

void ProfilesController::tell_date_left_out(Date date) {
  const auto written = [](Date moment) { return to_utf8(format_date(moment, u"dd/MM/yyyy HH:mm:ss")); };
  show_alert(model_.ports(), make_alert("", "DATELEFTOUT", written(date), written(values().dateTimeCustomDate)));
}

// All of them, save that a list that the person keeps keeps its mode.
void ProfilesController::replace_settings(RenameSettings settings) {
  list_.switch_mode(settings.isFolders, ListController::Asks::always);
  set_mode(settings, values().isFolders);
  model_.settings().replace(std::move(settings));
}

// Saving

SettingsRecord ProfilesController::record_of_profile() const {
  SettingsRecord record = getCurrentSettings(values());
  put_choices(record, model_.choices());
  return record;
}

bool ProfilesController::write_profile(const std::string& path) {
  const Status status = write_profile_file(path, record_of_profile());
  if (!status.ok())
    show_alert(model_.ports(), make_alert("PROFILETITLE", "PROFILESAVEDFAILED"), AlertStyle::critical, status.reason());
  return status.ok();
}

bool ProfilesController::saveProfile() {
  desktop().end_editing();
  return currProfileFile_.empty() ? saveAsProfile() : write_profile(currProfileFile_);
}

bool ProfilesController::saveAsProfile() {
  desktop().end_editing();
  SaveRequest request;
  request.title = localized("SAVEASPROFILETITLE");
  request.folder = model_.preferences().defaultProfileFolderPath;
  request.name = currProfileFile_.substr(currProfileFile_.rfind('/') + 1);
  request.extension = profile_extension;
  const std::optional<std::string> path = model_.ports().chooser.choose(request);
  if (!path || !write_profile(*path)) return false;
  set_curr_profile(*path);
  return true;
}

bool ProfilesController::saveNewProfile(const std::string& path) {
  desktop().end_editing();
  const Status status = write_profile_file(path, record_of_profile());
  if (!status.ok()) log_failure("saveNewProfile", status.reason());
  return status.ok();
}

void ProfilesController::save_left_profile() {
  if (currProfileFile_.empty() || !model_.preferences().automaticSaveCurrProfile) return;
  desktop().end_editing();
  saveProfile();
}

// Starting afresh

void ProfilesController::loadEmptyProfile() {
  jobs_.command([this] {
    save_left_profile();
    model_.state().isHasFilesForRenaming = false;
    RenameSettings empty;
    brindle::loadEmptyProfile(empty, model_.now());
    replace_settings(std::move(empty));
    close_profile();
    start_with_method();
    model_.tell(Changed::state | Changed::masks);
  });
}

void ProfilesController::close_profile() {
  set_curr_profile("");
  model_.user_defaults().set(user_default::last_profile, u"");
  model_.save_user_defaults();
}

}  // namespace brindle
