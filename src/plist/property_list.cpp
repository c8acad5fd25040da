#include "plist/property_list.h"

#include <fmt/format.h>

#include <cerrno>

#include "platform/atomic_file.h"
#include "plist/binary_property_list.h"
#include "plist/xml_property_list.h"

namespace brindle {
std::string read_property_list(std::string_view bytes, PropertyList& list, const PropertyListBudget& budget) {
  if (bytes.empty()) return "it is empty";
  if (!bytes.starts_with("bplist")) return read_xml_property_list(bytes, list, budget);
  PropertyList read;
  std::string error = read_binary_property_list(bytes, read.value, budget);
  if (error.empty()) list = std::move(read);
  return error;
}

std::string read_property_list_file(const std::string& path, PropertyList& list) {
  std::string bytes;
  const int error = read_regular_file(path, property_list_size_limit, bytes);
  if (error != 0)
    return fmt::format("“{}” cannot be read: {}", path, reading_error_text(error, property_list_size_limit));
  const std::string fault = read_property_list(bytes, list);
  return fault.empty() ? fault : fmt::format("“{}” is no property list that can be read: {}", path, fault);
}

std::string write_property_list_file(const std::string& path, const PropertyValue& value,
                                     std::u16string_view appversion) {
  return write_file_atomically(path, write_xml_property_list(value, appversion));
}

}  // namespace brindle
