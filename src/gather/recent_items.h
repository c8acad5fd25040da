#pragma once

// The folders that were chosen lately. Plain data; one thread at a time.

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date.h"
#include "plist/property_value.h"

namespace brindle {

/// A folder, and when it was last chosen.
struct RecentItem {
  std::string itemPath;  ///< bytes, absolute
  Date lastUsedDate;

  RecentItem();                                ///< "" and now
  explicit RecentItem(std::string_view path);  ///< `path` and now
  RecentItem(std::string_view path, Date last_used);

  /// "itemPath" and "lastUsedDate".
  PropertyDictionary getData() const;
  /// Takes those of the two entries that are there and of the right kind.
  void setData(const PropertyDictionary& data);

  bool operator==(const RecentItem& other) const { return itemPath == other.itemPath; }
  bool operator==(std::string_view path) const { return itemPath == path; }
};

/// The list as the menu shows it: newest first, of any length.
class RecentItems {
 public:
  const std::vector<RecentItem>& items() const { return items_; }

  /// Adds each folder that is not there yet, as used `now`; one that is there keeps its date.
  void addRecentItem(std::span<const std::string> paths, Date now);
  /// Stamps an item with `now` and sorts; returns its path. None when there is no such item.
  std::optional<std::string> choose(std::size_t index, Date now);

  /// The array of "RECENTITEMS", and the way back (what is no recent item, or names no absolute path, is passed over).
  PropertyValue to_property_value() const;
  void from_property_value(const PropertyValue& value);

 private:
  void sort();

  std::vector<RecentItem> items_;
};

}  // namespace brindle
