// The preferences.

#include "app/brindle_app_controller.h"
#include "platform/app_info.h"
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

void BrindleAppController::setPreferences(const Preferences& preferences) {
  preferences_ = preferences;
  const Status status = savePreferences(preferences_);
  tell(Changed::preferences);
  if (status.ok()) return;
  Alert alert;
  alert.title = getAppTitle();
  alert.message = status.reason();
  ports_.alerts.show(alert);
}

std::optional<std::string> BrindleAppController::browseLogFolderPath(const std::string& current) {
  return choose_folder(ports_, "CHOOSELOGFOLDERPATHTITLE", current);
}

std::optional<std::string> BrindleAppController::browseProfileFolderPath(const std::string& current) {
  return choose_folder(ports_, "CHOOSEPROFILEFOLDERPATHTITLE", current);
}

std::optional<std::string> BrindleAppController::browseRulesFolderPath(const std::string& current) {
  return choose_folder(ports_, "CHOOSERULEFOLDERPATHTITLE", current);
}

}  // namespace brindle
