#include "app/preferences_controller.h"

#include "platform/message_log.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::optional<std::string> choose_folder(const Ports& ports, std::string_view title_key, const std::string& current) {
  OpenRequest request;
  request.title = localized(title_key);
  request.folder = current;
  request.files = false;
  request.folders = true;
  const std::vector<std::string> paths = ports.chooser.choose(request);
  return paths.empty() ? std::nullopt : std::optional(paths.front());
}

}  // namespace

void PreferencesController::read() {
  model_.preferences() = default_preferences();
  if (!loadPreferences(model_.preferences())) {
    const Status status = savePreferences(model_.preferences());
    if (!status.ok()) log_failure("savePreferences", status.reason());
  }
  UserDefaults& defaults = model_.user_defaults();
  if (const PropertyValue* recent = defaults.find(user_default::recent_items))
    model_.recent().from_property_value(*recent);
  LivePreviewPreferences& live = model_.live_preview() = {};
  live.isLivePreviewEnabled = defaults.boolean(user_default::live_preview, true);
  live.isLivePreviewAllFiles = defaults.boolean(user_default::live_preview_all_files, false);
  live.livePreviewFilesLimit = defaults.text(user_default::live_preview_files_limit, u"2500");
  const PropertyValue* choices = defaults.find(user_default::run_choices);
  const auto* record = choices == nullptr ? nullptr : choices->get_if<PropertyDictionary>();
  model_.choices() = record == nullptr ? RunChoices() : choices_in(*record);
  model_.set_include_hidden(defaults.boolean(user_default::include_hidden, false));
}

void PreferencesController::setPreferences(const Preferences& preferences) {
  model_.preferences() = preferences;
  const Status status = savePreferences(preferences);
  model_.tell(Changed::preferences);
  if (!status.ok()) show_alert(model_.ports(), make_alert_of("", "", status.reason()));
}

void PreferencesController::setIncludeHidden(bool include) {
  model_.set_include_hidden(include);
  model_.user_defaults().set(user_default::include_hidden, include);
  model_.save_user_defaults();
  model_.tell(Changed::preferences);
}

std::optional<std::string> PreferencesController::browseLogFolderPath(const std::string& current) {
  return choose_folder(model_.ports(), "CHOOSELOGFOLDERPATHTITLE", current);
}

std::optional<std::string> PreferencesController::browseProfileFolderPath(const std::string& current) {
  return choose_folder(model_.ports(), "CHOOSEPROFILEFOLDERPATHTITLE", current);
}

std::optional<std::string> PreferencesController::browseRulesFolderPath(const std::string& current) {
  return choose_folder(model_.ports(), "CHOOSERULEFOLDERPATHTITLE", current);
}

}  // namespace brindle
