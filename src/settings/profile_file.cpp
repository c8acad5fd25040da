#include "settings/profile_file.h"

#include "platform/translation.h"
#include "plist/property_list.h"

namespace brindle {

Result<SettingsRecord> read_profile_file(const std::string& path) {
  const Result<PropertyList> list = read_property_list_file(path);
  if (!list.ok()) return list.status();
  if (const auto* dictionary = list->value.get_if<PropertyDictionary>()) return *dictionary;
  return Status(translated("“{}” is no profile: it should hold a dictionary of settings, and holds {}", path,
                           translated(kind_name(list->value))));
}

Status write_profile_file(const std::string& path, const SettingsRecord& record) {
  return write_property_list_file(path, record);
}

}  // namespace brindle
