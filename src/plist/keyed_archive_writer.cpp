#include <array>
#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <utility>

#include "plist/keyed_archive.h"
#include "plist/property_list.h"
#include "plist/scalar_text.h"

namespace brindle {
namespace {

using Lineage = std::span<const std::u16string_view>;  // a class and those above it

constexpr auto array_class = std::to_array<std::u16string_view>({u"NSMutableArray", u"NSArray", u"NSObject"});
constexpr auto dictionary_class =
    std::to_array<std::u16string_view>({u"NSMutableDictionary", u"NSDictionary", u"NSObject"});
constexpr auto data_class = std::to_array<std::u16string_view>({u"NSMutableData", u"NSData", u"NSObject"});
constexpr auto date_class = std::to_array<std::u16string_view>({u"NSDate", u"NSObject"});

// Its recursion goes as deep as the value, which the readers bound.
class Archiver {
 public:
  PropertyUid add(const PropertyValue& value) {
    return value.visit([this](const auto& content) { return add_content(content); });
  }

  PropertyUid add_objects(Lineage lineage, std::span<const PropertyDictionary> objects) {
    return add_array(objects, [&](const PropertyDictionary& entries) {
      return add_object(lineage, [&](PropertyDictionary& object) {
        for (const PropertyEntry& entry : entries) object.append(entry.key, add(entry.value));
      });
    });
  }

  PropertyValue::Data archive(PropertyUid root) && {
    PropertyDictionary top;
    top.append(u"root", root);
    PropertyDictionary list;
    list.append(u"$version", 100000);
    list.append(u"$archiver", u"NSKeyedArchiver");
    list.append(u"$top", std::move(top));
    list.append(u"$objects", std::move(objects_));
    const std::string bytes = write_binary_property_list(list);
    return {bytes.begin(), bytes.end()};
  }

 private:
  PropertyUid next() const { return {objects_.size()}; }

  PropertyUid push(PropertyValue object) {
    objects_.push_back(std::move(object));
    return {objects_.size() - 1};
  }

  PropertyUid add_class(Lineage lineage) {
    const auto [found, is_new] = classes_.try_emplace(lineage.front(), next());
    if (is_new) {
      PropertyDictionary description;
      description.append(u"$classname", lineage.front());
      description.append(u"$classes", PropertyValue::Array(lineage.begin(), lineage.end()));
      push(std::move(description));
    }
    return found->second;
  }

  // An object stands before those that it refers to.
  template <class Fill>
  PropertyUid add_object(Lineage lineage, Fill fill) {
    const PropertyUid uid = push({});
    PropertyDictionary object;
    fill(object);
    object.append(u"$class", add_class(lineage));
    objects_[uid.index] = std::move(object);
    return uid;
  }

  template <class List, class Add>
  PropertyUid add_array(const List& list, Add add_member) {
    return add_object(array_class, [&](PropertyDictionary& object) {
      PropertyValue::Array members;
      for (const auto& member : list) members.emplace_back(add_member(member));
      object.append(u"NS.objects", std::move(members));
    });
  }

  PropertyUid add_content(const std::u16string& text) {
    const auto [found, is_new] = texts_.try_emplace(text, next());
    if (is_new) push(text);
    return found->second;
  }
  PropertyUid add_content(bool flag) { return push(flag); }
  PropertyUid add_content(std::int64_t number) { return push(number); }
  PropertyUid add_content(double number) { return push(number); }
  PropertyUid add_content(Date date) {
    return add_object(date_class,
                      [&](PropertyDictionary& object) { object.append(u"NS.time", reference_seconds(date)); });
  }
  PropertyUid add_content(const PropertyValue::Data& data) {
    return add_object(data_class, [&](PropertyDictionary& object) { object.append(u"NS.data", data); });
  }
  PropertyUid add_content(const PropertyValue::Array& members) {
    return add_array(members, [this](const PropertyValue& member) { return add(member); });
  }
  PropertyUid add_content(const PropertyDictionary& dictionary) {
    return add_object(dictionary_class, [&](PropertyDictionary& object) {
      PropertyValue::Array keys;
      PropertyValue::Array values;
      for (const PropertyEntry& entry : dictionary) keys.emplace_back(add_content(entry.key));
      for (const PropertyEntry& entry : dictionary) values.emplace_back(add(entry.value));
      object.append(u"NS.keys", std::move(keys));
      object.append(u"NS.objects", std::move(values));
    });
  }
  // Of some other archive: it must not refer to an object of this one.
  PropertyUid add_content(PropertyUid uid) {
    PropertyDictionary dictionary;
    dictionary.append(u"CF$UID", static_cast<std::int64_t>(uid.index));
    return add_content(dictionary);
  }

  PropertyValue::Array objects_{u"$null"};
  std::map<std::u16string, PropertyUid, std::less<>> texts_;
  std::map<std::u16string_view, PropertyUid> classes_;
};

}  // namespace

PropertyValue::Data archive_value(const PropertyValue& value) {
  Archiver archiver;
  const PropertyUid root = archiver.add(value);
  return std::move(archiver).archive(root);
}

PropertyValue::Data archive_objects(std::u16string_view class_name, std::span<const PropertyDictionary> objects) {
  const auto lineage = std::to_array<std::u16string_view>({class_name, u"NSObject"});
  Archiver archiver;
  const PropertyUid root = archiver.add_objects(lineage, objects);
  return std::move(archiver).archive(root);
}

}  // namespace brindle
