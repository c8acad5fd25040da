#include "plist/property_value.h"

#include <algorithm>

#include "platform/translation.h"

namespace brindle {

// Out of line, since a dictionary is part of the value that it holds.
PropertyDictionary::PropertyDictionary() = default;
PropertyDictionary::PropertyDictionary(const PropertyDictionary&) = default;
PropertyDictionary::PropertyDictionary(PropertyDictionary&&) noexcept = default;
PropertyDictionary& PropertyDictionary::operator=(const PropertyDictionary&) = default;
PropertyDictionary& PropertyDictionary::operator=(PropertyDictionary&&) noexcept = default;
PropertyDictionary::~PropertyDictionary() = default;

const PropertyValue* PropertyDictionary::find(std::u16string_view key) const {
  const auto found = std::ranges::find(entries_, key, &PropertyEntry::key);
  return found == entries_.end() ? nullptr : &found->value;
}

void PropertyDictionary::set(std::u16string_view key, PropertyValue value) {
  const auto found = std::ranges::find(entries_, key, &PropertyEntry::key);
  if (found == entries_.end()) {
    append(key, std::move(value));
  } else {
    found->value = std::move(value);
  }
}

void PropertyDictionary::append(std::u16string_view key, PropertyValue value) {
  entries_.push_back({std::u16string(key), std::move(value)});
}

std::size_t PropertyDictionary::size() const {
  return entries_.size();
}

std::vector<PropertyEntry>::const_iterator PropertyDictionary::begin() const {
  return entries_.begin();
}
std::vector<PropertyEntry>::const_iterator PropertyDictionary::end() const {
  return entries_.end();
}

bool PropertyDictionary::operator==(const PropertyDictionary& other) const {
  return entries_ == other.entries_;
}

namespace {

struct KindName {
  std::string_view operator()(const std::u16string&) const { return to_translate("a text"); }
  std::string_view operator()(bool) const { return to_translate("a flag"); }
  std::string_view operator()(std::int64_t) const { return to_translate("a number"); }
  std::string_view operator()(double) const { return to_translate("a number"); }
  std::string_view operator()(Date) const { return to_translate("a date"); }
  std::string_view operator()(const PropertyValue::Data&) const { return to_translate("data"); }
  std::string_view operator()(const PropertyValue::Array&) const { return to_translate("an array"); }
  std::string_view operator()(const PropertyDictionary&) const { return to_translate("a dictionary"); }
  std::string_view operator()(PropertyUid) const { return to_translate("a reference"); }
};

}  // namespace

std::string_view kind_name(const PropertyValue& value) {
  return value.visit(KindName());
}

}  // namespace brindle
