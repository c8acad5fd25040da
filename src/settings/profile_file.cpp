#include "settings/profile_file.h"

#include <fmt/format.h>

#include "plist/property_list.h"

namespace brindle {

std::string read_profile_file(const std::string& path, SettingsRecord& record) {
  PropertyList list;
  std::string error = read_property_list_file(path, list);
  if (!error.empty()) return error;
  const auto* dictionary = list.value.get_if<PropertyDictionary>();
  if (!dictionary) {
    return fmt::format("“{}” is no profile: it should hold a dictionary of settings, and holds {}", path,
                       kind_name(list.value));
  }
  record = *dictionary;
  return {};
}

std::string write_profile_file(const std::string& path, const SettingsRecord& record) {
  return write_property_list_file(path, record);
}

}  // namespace brindle
