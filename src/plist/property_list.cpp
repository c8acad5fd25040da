#include "plist/property_list.h"

#include "platform/atomic_file.h"
#include "platform/translation.h"

namespace brindle {

Result<PropertyList> read_property_list(std::string_view bytes, const PropertyListBudget& budget) {
  if (bytes.empty()) return Status(translated("it is empty"));
  if (!bytes.starts_with("bplist")) return read_xml_property_list(bytes, budget);
  Result<PropertyValue> value = read_binary_property_list(bytes, budget);
  if (!value.ok()) return value.status();
  return PropertyList{*std::move(value), {}};
}

Result<PropertyList> read_property_list_file(const std::string& path) {
  const Result<std::string> bytes = read_regular_file(path, property_list_size_limit);
  if (!bytes.ok()) return Status(translated("“{}” cannot be read: {}", path, bytes.reason()), bytes.status().error());
  Result<PropertyList> list = read_property_list(*bytes);
  if (list.ok()) return list;
  return Status(translated("“{}” is no property list that can be read: {}", path, list.reason()));
}

Status write_property_list_file(const std::string& path, const PropertyValue& value, std::u16string_view appversion) {
  return write_file_atomically(path, write_xml_property_list(value, appversion));
}

}  // namespace brindle
