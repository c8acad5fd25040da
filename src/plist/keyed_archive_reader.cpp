#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "plist/keyed_archive.h"
#include "plist/property_list.h"
#include "plist/property_value.h"
#include "plist/scalar_text.h"

namespace brindle {
namespace {

template <class T>
const T* entry(const PropertyDictionary& dictionary, std::u16string_view key) {
  const PropertyValue* value = dictionary.find(key);
  return value ? value->get_if<T>() : nullptr;
}

// A value that stands in the list as it is.
std::size_t bytes_of(const PropertyValue& value) {
  if (const auto* text = value.get_if<std::u16string>()) return 2 * text->size();
  const auto* data = value.get_if<PropertyValue::Data>();
  return data ? data->size() : 0;
}

using Found = std::optional<PropertyValue>;

class Unarchiver {
 public:
  Unarchiver(const PropertyValue::Array& objects, const TextClass& own) : objects_(objects), own_(own) {}

  Found object(PropertyUid uid) {
    if (uid.index == 0 || uid.index >= objects_.size()) return std::nullopt;
    const PropertyValue& stored = objects_[uid.index];
    if (!budget_.take_values(1)) return std::nullopt;
    if (const auto* instance = stored.get_if<PropertyDictionary>()) return open(uid, *instance);
    const bool is_plain = !stored.get_if<PropertyValue::Array>() && !stored.get_if<PropertyUid>();
    return is_plain && budget_.take_bytes(bytes_of(stored)) ? Found(stored) : std::nullopt;
  }

 private:
  // Recursion ends at the depth limit, and so does a graph that holds itself.
  Found open(PropertyUid uid, const PropertyDictionary& instance) {
    if (open_.size() == property_list_depth_limit || std::ranges::find(open_, uid.index) != open_.end()) {
      return std::nullopt;
    }
    open_.push_back(uid.index);
    Found value = instance_value(instance);
    open_.pop_back();
    return value;
  }

  Found instance_value(const PropertyDictionary& instance) {
    const std::u16string_view name = class_of(instance);
    if (name == u"NSArray" || name == u"NSMutableArray") return array(instance);
    if (name == u"NSDictionary" || name == u"NSMutableDictionary") return dictionary(instance);
    if (name == u"NSString" || name == u"NSMutableString") return content<std::u16string>(instance, u"NS.string");
    if (name == u"NSData" || name == u"NSMutableData") return content<PropertyValue::Data>(instance, u"NS.data");
    if (name == u"NSDate") return date(instance);
    if (name == u"NSNull") return PropertyValue();
    return !name.empty() && name == own_.name ? texts(instance) : std::nullopt;
  }

  // "" for what is no class. To look through a dictionary costs as much as to hold its entries.
  std::u16string_view class_of(const PropertyDictionary& instance) {
    if (!budget_.take_values(instance.size())) return {};
    const auto* uid = entry<PropertyUid>(instance, u"$class");
    if (!uid || uid->index >= objects_.size()) return {};
    const auto* description = objects_[uid->index].get_if<PropertyDictionary>();
    if (!description || !budget_.take_values(description->size())) return {};
    const auto* name = entry<std::u16string>(*description, u"$classname");
    return name ? std::u16string_view(*name) : std::u16string_view();
  }

  template <class T>
  Found content(const PropertyDictionary& instance, std::u16string_view key) {
    const T* value = entry<T>(instance, key);
    return value && budget_.take_bytes(value->size() * sizeof value->front()) ? Found(*value) : std::nullopt;
  }

  // As a binary list stores and reads it, so within its bounds.
  static Found date(const PropertyDictionary& instance) {
    const PropertyValue* seconds = instance.find(u"NS.time");
    const auto* real = seconds ? seconds->get_if<double>() : nullptr;
    const auto* whole = seconds ? seconds->get_if<std::int64_t>() : nullptr;
    if (!real && !whole) return std::nullopt;
    const std::optional<Date> moment = date_of_reference_seconds(real ? *real : static_cast<double>(*whole));
    return moment ? Found(*moment) : std::nullopt;
  }

  std::optional<PropertyValue::Array> members(const PropertyDictionary& instance, std::u16string_view key) {
    const auto* references = entry<PropertyValue::Array>(instance, key);
    if (!references) return std::nullopt;
    PropertyValue::Array values;
    for (const PropertyValue& reference : *references) {
      const auto* uid = reference.get_if<PropertyUid>();
      Found value = uid ? object(*uid) : std::nullopt;
      if (!value) return std::nullopt;
      values.push_back(std::move(*value));
    }
    return values;
  }

  Found array(const PropertyDictionary& instance) {
    auto values = members(instance, u"NS.objects");
    return values ? Found(std::move(*values)) : std::nullopt;
  }

  Found dictionary(const PropertyDictionary& instance) {
    const auto keys = members(instance, u"NS.keys");
    auto values = keys ? members(instance, u"NS.objects") : std::nullopt;
    if (!values || keys->size() != values->size()) return std::nullopt;
    std::vector<PropertyEntry> pairs;
    for (std::size_t i = 0; i < keys->size(); ++i) {
      const auto* key = (*keys)[i].get_if<std::u16string>();
      if (!key) return std::nullopt;
      pairs.push_back({*key, std::move((*values)[i])});
    }
    return dictionary_of_pairs(std::move(pairs));
  }

  Found texts(const PropertyDictionary& instance) {
    PropertyDictionary texts;
    for (const std::u16string_view key : own_.keys) {
      const PropertyValue* reference = instance.find(key);
      const auto* uid = reference ? reference->get_if<PropertyUid>() : nullptr;
      if (reference && !uid) return std::nullopt;
      Found text = !uid || uid->index == 0 ? Found(PropertyValue()) : object(*uid);
      if (!text || !text->get_if<std::u16string>()) return std::nullopt;
      texts.append(key, std::move(*text));
    }
    return texts;
  }

  const PropertyValue::Array& objects_;
  const TextClass& own_;
  PropertyListBudget budget_;
  std::vector<std::uint64_t> open_;
};

}  // namespace

std::optional<PropertyValue> unarchive_value(std::string_view bytes, const TextClass& own) {
  const Result<PropertyList> list = read_property_list(bytes);
  if (!list.ok()) return std::nullopt;
  const auto* archive = list->value.get_if<PropertyDictionary>();
  if (!archive) return std::nullopt;
  const auto* archiver = entry<std::u16string>(*archive, u"$archiver");
  const auto* top = entry<PropertyDictionary>(*archive, u"$top");
  const auto* objects = entry<PropertyValue::Array>(*archive, u"$objects");
  const auto* root = top ? entry<PropertyUid>(*top, u"root") : nullptr;
  if (!archiver || *archiver != u"NSKeyedArchiver" || !objects || !root) return std::nullopt;
  return Unarchiver(*objects, own).object(*root);
}

}  // namespace brindle
