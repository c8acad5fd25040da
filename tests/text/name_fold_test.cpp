#include "text/name_fold.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace brindle {
namespace {

TEST(NameFold, FindsWhatADiskMayTakeForOneName) {
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"IMG_0001.JPG", "img_0001.jpg"},
      {"[@Z`{", "[@z`{"},
      {"caf\u00e9", "cafe\u0301"},
      {"CAF\u00c9 AU LAIT.TXT", "cafe\u0301 au lait.txt"},
      {"\u212a1", "k1"},  // the sign for kelvin
      {"\uac00", "\u1100\u1161"},
      {"a\xff", "A\xff"},
  };
  for (const auto& [a, b] : pairs) {
    EXPECT_TRUE(are_alike(a, b)) << a << " " << b;
    EXPECT_EQ(folded_name_hash(a, 7), folded_name_hash(b, 7)) << a << " " << b;
  }
}

TEST(NameFold, TellsTheOthersApart) {
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"a", "b"}, {"stra\u00dfe", "strasse"}, {"a", "a "}, {"\xff", "\xfe"}, {"12345678a", "12345678"}, {"[", "{"}};
  for (const auto& [a, b] : pairs) {
    EXPECT_FALSE(are_alike(a, b)) << a << " " << b;
    EXPECT_NE(folded_name_hash(a, 7), folded_name_hash(b, 7)) << a << " " << b;
  }
  EXPECT_NE(folded_name_hash("a", 7), folded_name_hash("a", 8));
}

TEST(NameFold, KnowsTheOtherForm) {
  EXPECT_EQ(in_other_form("caf\u00e9"), "cafe\u0301");
  EXPECT_EQ(in_other_form("cafe\u0301"), "caf\u00e9");
  EXPECT_EQ(in_other_form("plain"), "plain");
}

}  // namespace
}  // namespace brindle
