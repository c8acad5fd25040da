// Feeds any bytes to the readers of property lists and keyed archives. What reads must write, and read back the same.

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "plist/keyed_archive.h"
#include "plist/property_list.h"
#include "settings/stored_value.h"

namespace {

using brindle::PropertyValue;

void require(bool condition) {
  if (!condition) std::abort();
}

PropertyValue read_back(std::string_view bytes) {
  auto list = brindle::read_property_list(bytes);
  require(list.ok());
  return std::move(list->value);
}

// Compared as bytes, since a number that is none does not equal itself.
void require_round_trips(const PropertyValue& value) {
  const std::string binary = brindle::write_binary_property_list(value);
  require(brindle::write_binary_property_list(read_back(binary)) == binary);
  const std::string xml = brindle::write_xml_property_list(value);
  require(brindle::write_xml_property_list(read_back(xml)) == xml);
}

void require_archive_round_trips(const PropertyValue& value) {
  const std::string binary = brindle::write_binary_property_list(value);
  if (binary.size() > 100'000) return;  // an archive counts more values than the list does
  const PropertyValue::Data archive = brindle::archive_value(value);
  const auto back = brindle::unarchive_value({reinterpret_cast<const char*>(archive.data()), archive.size()});
  require(back && brindle::write_binary_property_list(*back) == binary);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto list = brindle::read_property_list(bytes);
  if (!list.ok()) return 0;
  require_round_trips(list->value);
  if (const std::optional<PropertyValue> root = brindle::unarchive_value(bytes, brindle::meta_data_field_class)) {
    require_round_trips(*root);
    require_archive_round_trips(*root);
  }
  brindle::unarchived_fields(PropertyValue::Data(data, data + size));
  return 0;
}
