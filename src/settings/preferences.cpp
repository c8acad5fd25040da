#include "settings/preferences.h"

#include "platform/data_folders.h"
#include "platform/file_name.h"
#include "platform/path.h"
#include "plist/property_list.h"
#include "plist/property_value.h"

namespace brindle {
namespace {

constexpr std::u16string_view log_folder_key = u"defaultLogFolderPath";
constexpr std::u16string_view profile_folder_key = u"defaultProfileFolderPath";
constexpr std::u16string_view rules_folder_key = u"defaultRulesFolderPath";
constexpr std::u16string_view automatic_save_key = u"automaticSaveCurrProfile";
constexpr std::u16string_view hub_icon_key = u"isShowHubIcon";

std::string below_data_folder(const char* name) {
  const std::string folder = getAppPath();
  return folder.empty() ? folder : join_path(folder, name);
}

void take_folder(const PropertyDictionary& values, std::u16string_view key, std::string& folder) {
  const PropertyValue* value = values.find(key);
  const auto* text = value == nullptr ? nullptr : value->get_if<std::u16string>();
  std::string path;
  if (text != nullptr && encode_path(*text, path) && path.starts_with('/'))
    folder = without_trailing_slashes(std::move(path));
}

void take_flag(const PropertyDictionary& values, std::u16string_view key, bool& flag) {
  if (const PropertyValue* value = values.find(key)) flag = flag_value(*value).value_or(flag);
}

Preferences saved_preferences() {
  Preferences preferences = default_preferences();
  loadPreferences(preferences);
  return preferences;
}

}  // namespace

Preferences default_preferences() {
  return {below_data_folder("Logs"), below_data_folder("Profiles"), below_data_folder("Rules")};
}

std::string preferences_path() {
  return below_data_folder("preferences.plist");
}

bool loadPreferences(Preferences& preferences) {
  const std::string path = preferences_path();
  if (path.empty()) return false;
  const Result<PropertyList> list = read_property_list_file(path);
  const auto* values = list.ok() ? list->value.get_if<PropertyDictionary>() : nullptr;
  if (values == nullptr) return false;
  take_folder(*values, log_folder_key, preferences.defaultLogFolderPath);
  take_folder(*values, profile_folder_key, preferences.defaultProfileFolderPath);
  take_folder(*values, rules_folder_key, preferences.defaultRulesFolderPath);
  take_flag(*values, automatic_save_key, preferences.automaticSaveCurrProfile);
  take_flag(*values, hub_icon_key, preferences.isShowHubIcon);
  return true;
}

Status savePreferences(const Preferences& preferences) {
  const Status folder = createApplicationUsersFolder("");
  if (!folder.ok()) return Status("The preferences cannot be saved: " + folder.reason());
  PropertyDictionary values;
  values.append(log_folder_key, decode_file_name(preferences.defaultLogFolderPath));
  values.append(profile_folder_key, decode_file_name(preferences.defaultProfileFolderPath));
  values.append(rules_folder_key, decode_file_name(preferences.defaultRulesFolderPath));
  values.append(automatic_save_key, preferences.automaticSaveCurrProfile ? u"1" : u"0");
  values.append(hub_icon_key, preferences.isShowHubIcon);
  return write_property_list_file(preferences_path(), values);
}

std::string default_log_folder() {
  return saved_preferences().defaultLogFolderPath;
}

std::string default_profile_folder() {
  return saved_preferences().defaultProfileFolderPath;
}

std::string default_rules_folder() {
  return saved_preferences().defaultRulesFolderPath;
}

}  // namespace brindle
