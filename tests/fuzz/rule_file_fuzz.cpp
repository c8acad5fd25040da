// Feeds any property list to the readers of rules and of settings records. A chain that reads is saved as it was.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "methods/rule_file.h"
#include "methods/validation.h"
#include "plist/property_list.h"
#include "settings/settings_record.h"

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

void use_rules(const brindle::PropertyValue& value, brindle::MethodNames names) {
  const auto rules = brindle::rules_from_property_value(value, names);
  if (!rules.ok()) return;
  const std::string saved = brindle::write_xml_property_list(brindle::rules_to_property_value(*rules));
  const auto list = brindle::read_property_list(saved);
  require(list.ok());
  const auto again = brindle::rules_from_property_value(list->value, brindle::MethodNames::as_read);
  require(again.ok());
  require(brindle::write_xml_property_list(brindle::rules_to_property_value(*again)) == saved);
  brindle::RenameSettings settings;
  for (const brindle::Rule& rule : *again) brindle::setRule(settings, rule);
}

void use_record(const brindle::PropertyDictionary& dictionary) {
  brindle::RenameSettings settings;
  brindle::setSettings(settings, dictionary);
  brindle::RenameSettings again;
  brindle::setSettings(again, brindle::getCurrentSettings(settings));
  again.dateTimeCustomDate = settings.dateTimeCustomDate;
  require(again == settings);
  brindle::validate_and_normalise(settings);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto list = brindle::read_property_list(bytes);
  if (!list.ok()) return 0;
  use_rules(list->value, brindle::MethodNames::as_read);
  use_rules(list->value, brindle::MethodNames::repaired);
  if (const auto* dictionary = list->value.get_if<brindle::PropertyDictionary>()) use_record(*dictionary);
  return 0;
}
