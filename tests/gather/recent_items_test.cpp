#include "gather/recent_items.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

Date at(int second) {
  return Date(std::chrono::seconds(second));
}

std::string paths(const RecentItems& recent) {
  std::string text;
  for (const RecentItem& item : recent.items()) text += item.itemPath + " ";
  return text;
}

TEST(RecentItems, StandNewestFirst) {
  RecentItems recent;
  recent.addRecentItem(std::vector<std::string>{"/a", "/b", "/a"}, at(1));
  recent.addRecentItem(std::vector<std::string>{"/a", "/c"}, at(2));
  EXPECT_EQ(paths(recent), "/c /a /b ");
  EXPECT_EQ(recent.choose(2, at(3)), "/b");
  EXPECT_EQ(recent.choose(3, at(4)), std::nullopt);
  EXPECT_EQ(paths(recent), "/b /c /a ");
  EXPECT_TRUE(recent.items()[0] == "/b");
}

TEST(RecentItems, ComeBackFromTheirStoredForm) {
  RecentItems recent;
  recent.addRecentItem(std::vector<std::string>{"/\xFF", "/b"}, at(7));
  PropertyValue::Array stored = *recent.to_property_value().get_if<PropertyValue::Array>();
  stored.emplace_back(u"no dictionary");
  stored.emplace_back(PropertyDictionary());
  stored.emplace_back(RecentItem("relative", at(9)).getData());
  stored.emplace_back(RecentItem("/b", at(9)).getData());
  RecentItems back;
  back.from_property_value(stored);
  EXPECT_EQ(back.to_property_value(), recent.to_property_value());
  back.from_property_value(u"no list");
  EXPECT_TRUE(back.items().empty());
}

}  // namespace
}  // namespace brindle
