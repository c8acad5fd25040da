#include "methods/rule_file.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/app_info.h"
#include "platform/translation.h"
#include "plist/property_list.h"

namespace brindle {
namespace {

// A rule in memory is large, and one in a hostile file may be tiny.
constexpr std::size_t rule_limit = 10'000;

// What keeps a value from being a chain, as the end of a sentence; "" when nothing does.
std::string fault_of(const PropertyValue& value) {
  const auto* array = value.get_if<PropertyValue::Array>();
  if (!array) return translated("it should hold an array of rules, and holds {}", translated(kind_name(value)));
  if (array->size() > rule_limit) return translated("it holds more than {} rules", rule_limit);
  const auto is_rule = [](const PropertyValue& member) { return member.get_if<PropertyDictionary>() != nullptr; };
  const auto odd = std::ranges::find_if_not(*array, is_rule);
  if (odd == array->end()) return {};
  return translated("its rule {} should be a dictionary, and is {}", odd - array->begin() + 1,
                    translated(kind_name(*odd)));
}

void repair_method_name(PropertyDictionary& dictionary) {
  constexpr std::u16string_view old_prefix = u"Rule - ";
  const PropertyValue* value = dictionary.find(u"rule");
  const auto* name = value ? value->get_if<std::u16string>() : nullptr;
  if (!name) return;
  std::u16string repaired;
  std::size_t at = 0;
  for (std::size_t found = 0; (found = name->find(old_prefix, at)) != std::u16string::npos;) {
    repaired.append(*name, at, found - at);
    at = found + old_prefix.size();
  }
  if (at == 0) return;
  repaired.append(*name, at);
  dictionary.set(u"rule", std::move(repaired));
}

Rule rule_of(PropertyDictionary dictionary, MethodNames names) {
  if (names == MethodNames::repaired) repair_method_name(dictionary);
  return rule_from_dictionary(dictionary);
}

}  // namespace

Result<std::vector<Rule>> read_rule_file(const std::string& path, MethodNames names) {
  const Result<PropertyList> list = read_property_list_file(path);
  if (!list.ok()) return list.status();
  Result<std::vector<Rule>> rules = rules_from_property_value(list->value, names);
  if (rules.ok()) return rules;
  return Status(translated("“{}” is no rule file: {}", path, rules.reason()));
}

Status write_rule_file(const std::string& path, std::span<const Rule> rules) {
  const std::string_view version = appVersion();
  return write_property_list_file(path, rules_to_property_value(rules), std::u16string(version.begin(), version.end()));
}

PropertyValue rules_to_property_value(std::span<const Rule> rules) {
  PropertyValue::Array array;
  array.reserve(rules.size());
  for (const Rule& rule : rules) array.emplace_back(rule_to_dictionary(rule));
  return array;
}

Result<std::vector<Rule>> rules_from_property_value(const PropertyValue& value, MethodNames names) {
  if (std::string fault = fault_of(value); !fault.empty()) return Status(std::move(fault));
  std::vector<Rule> rules;
  for (const PropertyValue& member : *value.get_if<PropertyValue::Array>()) {
    rules.push_back(rule_of(*member.get_if<PropertyDictionary>(), names));
  }
  return rules;
}

}  // namespace brindle
