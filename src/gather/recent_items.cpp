#include "gather/recent_items.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "platform/file_name.h"

namespace brindle {
namespace {

constexpr std::u16string_view path_key = u"itemPath";
constexpr std::u16string_view date_key = u"lastUsedDate";

}  // namespace

RecentItem::RecentItem() : RecentItem("") {}

RecentItem::RecentItem(std::string_view path) : RecentItem(path, current_time()) {}

RecentItem::RecentItem(std::string_view path, Date last_used) : itemPath(path), lastUsedDate(last_used) {}

PropertyDictionary RecentItem::getData() const {
  PropertyDictionary data;
  data.append(path_key, decode_file_name(itemPath));
  data.append(date_key, lastUsedDate);
  return data;
}

void RecentItem::setData(const PropertyDictionary& data) {
  const PropertyValue* path = data.find(path_key);
  const auto* text = path == nullptr ? nullptr : path->get_if<std::u16string>();
  std::string bytes;
  if (text != nullptr && encode_path(*text, bytes)) itemPath = std::move(bytes);
  const PropertyValue* date = data.find(date_key);
  if (const Date* used = date == nullptr ? nullptr : date->get_if<Date>()) lastUsedDate = *used;
}

void RecentItems::addRecentItem(std::span<const std::string> paths, Date now) {
  std::unordered_set<std::string> known;
  for (const RecentItem& item : items_) known.insert(item.itemPath);
  for (const std::string& path : paths) {
    if (known.insert(path).second) items_.emplace_back(path, now);
  }
  sort();
}

std::optional<std::string> RecentItems::choose(std::size_t index, Date now) {
  if (index >= items_.size()) return std::nullopt;
  items_[index].lastUsedDate = now;
  std::string path = items_[index].itemPath;
  sort();
  return path;
}

PropertyValue RecentItems::to_property_value() const {
  PropertyValue::Array array;
  for (const RecentItem& item : items_) array.emplace_back(item.getData());
  return array;
}

void RecentItems::from_property_value(const PropertyValue& value) {
  items_.clear();
  const auto* array = value.get_if<PropertyValue::Array>();
  if (array == nullptr) return;
  std::unordered_set<std::string> known;
  for (const PropertyValue& member : *array) {
    const auto* data = member.get_if<PropertyDictionary>();
    if (data == nullptr) continue;
    RecentItem item;
    item.setData(*data);
    if (item.itemPath.starts_with('/') && known.insert(item.itemPath).second) items_.push_back(std::move(item));
  }
  sort();
}

void RecentItems::sort() {
  std::stable_sort(items_.begin(), items_.end(),
                   [](const RecentItem& a, const RecentItem& b) { return a.lastUsedDate > b.lastUsedDate; });
}

}  // namespace brindle
