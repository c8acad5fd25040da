#include "plist/property_value.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string_view>
#include <utility>

#include "platform/translation.h"

namespace brindle {
namespace {

bool means_yes(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size()));
  if (text.starts_with(u'+') || text.starts_with(u'-')) text.remove_prefix(1);
  text.remove_prefix(std::min(text.find_first_not_of(u'0'), text.size()));
  constexpr std::u16string_view yes = u"123456789YyTt";
  return !text.empty() && yes.find(text.front()) != std::u16string_view::npos;
}

}  // namespace

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

PropertyDictionary dictionary_of_pairs(std::vector<PropertyEntry>&& pairs) {
  std::vector<std::size_t> by_key(pairs.size());
  std::iota(by_key.begin(), by_key.end(), std::size_t{0});
  std::ranges::stable_sort(by_key, {}, [&](std::size_t i) -> const std::u16string& { return pairs[i].key; });
  std::vector<bool> dropped(pairs.size());
  std::size_t first = 0;
  for (std::size_t i = 1; i < by_key.size(); ++i) {
    if (pairs[by_key[i]].key != pairs[by_key[first]].key) {
      first = i;
      continue;
    }
    pairs[by_key[first]].value = std::move(pairs[by_key[i]].value);
    dropped[by_key[i]] = true;
  }
  PropertyDictionary dictionary;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    if (!dropped[i]) dictionary.append(pairs[i].key, std::move(pairs[i].value));
  }
  return dictionary;
}

std::optional<bool> flag_value(const PropertyValue& value) {
  if (const bool* flag = value.get_if<bool>()) return *flag;
  if (const std::int64_t* number = value.get_if<std::int64_t>()) return *number != 0;
  if (const double* number = value.get_if<double>()) return *number != 0;
  if (const std::u16string* text = value.get_if<std::u16string>()) return means_yes(*text);
  return std::nullopt;
}

}  // namespace brindle
