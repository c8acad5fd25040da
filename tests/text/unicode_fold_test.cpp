#include "text/unicode_fold.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(DifferInCaseOnly, ComparesLettersAsUnicodeDoes) {
  EXPECT_TRUE(differ_in_case_only("IMG.JPG", "img.jpg"));
  EXPECT_TRUE(differ_in_case_only("\xC3\x89t\xC3\xA9", "\xC3\xA9T\xC3\x89"));
  EXPECT_FALSE(differ_in_case_only("same", "same"));
  EXPECT_FALSE(differ_in_case_only("a", "b"));
}

}  // namespace
}  // namespace brindle
