#include "text/string_utilities.h"

#include "case_table.h"
#include "text/unicode_fold.h"

namespace brindle::test {
namespace {

std::u16string decimal(std::size_t position) {
  return decode_file_name(std::to_string(position));
}

// Every operation of the table by its name.
std::u16string outcome(const Case& c) {
  const std::u16string& text = c["text"];
  const std::u16string& operation = c["operation"];
  const bool exact = c.flag("exact", true);
  const std::int32_t start = c.number("start", 1);
  const std::int32_t n = c.number("n", 1);
  if (operation == u"instrString") return decimal(instrString(text, c["find"], start, exact));
  if (operation == u"findLocationInString") return decimal(findLocationInString(text, {c["find"], exact}, n));
  if (operation == u"leftString") return std::u16string(leftString(text, n));
  if (operation == u"midString") return std::u16string(midString(text, start, n));
  if (operation == u"reverseString") return reverseString(text);
  if (operation == u"replaceString") return replaceString(text, c["find"], c["with"], start, n, exact);
  if (operation == u"removeString") return removeString(text, c["find"], c["with"], start, n, exact);
  if (operation == u"insertString") return insertString(text, c["find"], c["with"], n, c.flag("before"));
  if (operation == u"swapStringBySeperator") return swapStringBySeperator(text, c["find"]);
  if (operation == u"swapStringByPosition") return swapStringByPosition(text, n);
  ADD_FAILURE() << "no such operation";
  return {};
}

TEST(StringUtilities, DoAsTheTableSays) {
  for_each_case("string_utilities", [](const Case& c) { EXPECT_EQ(to_utf8(outcome(c)), to_utf8(c["result"])); });
}

// The search is compared with trying every position: small alphabets make overlapping near-matches, which is where a
// linear search goes wrong, and halves of surrogate pairs stand among the letters.
TEST(SearchText, FindsWhatTryingEveryPositionFinds) {
  constexpr std::u16string_view alphabet = u"aAb\xD83D\xDE00";
  std::uint32_t seed = 1;
  const auto random = [&seed](std::uint32_t bound) { return (seed = seed * 1664525 + 1013904223) / 65536 % bound; };
  const auto random_text = [&](std::uint32_t longest) {
    std::u16string text(random(longest + 1), u'\0');
    for (char16_t& unit : text) unit = alphabet[random(5)];
    return text;
  };
  const auto inside_pair = [](const std::u16string& text, std::size_t i) {
    return i > 0 && i < text.size() && text[i - 1] == 0xD83D && text[i] == 0xDE00;
  };
  for (int round = 0; round < 20000; ++round) {
    const std::u16string text = random_text(24);
    const std::u16string find = random_text(5);
    const bool exact = random(2) == 0;
    const std::size_t from = random(26);
    std::size_t expected = std::u16string::npos;
    for (std::size_t i = from; !find.empty() && i + find.size() <= text.size(); ++i) {
      const std::u16string part = text.substr(i, find.size());
      const bool equal = exact ? part == find : folded(part) == folded(find);
      if (!equal || inside_pair(text, i) || inside_pair(text, i + find.size())) continue;
      expected = i;
      break;
    }
    ASSERT_EQ(SearchText(find, exact).find(text, from), expected) << round;
  }
}

}  // namespace
}  // namespace brindle::test
