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
  const SearchText find(c["find"], exact);
  std::u16string out;
  if (operation == u"find") return decimal(find.find(text, static_cast<std::size_t>(start) - 1) + 1);
  if (operation == u"findLocationInString") return decimal(findLocationInString(text, find, n));
  if (operation == u"append_reversed") return append_reversed(text, out), out;
  if (operation == u"replaceString") return replaceString(text, c["find"], c["with"], start, n, exact);
  if (operation == u"append_removed") return append_removed(text, find, !c["with"].empty(), start, n, out), out;
  if (operation == u"append_inserted") return append_inserted(text, find, c["with"], n, c.flag("before"), out), out;
  if (operation == u"append_swapped around") return append_swapped(text, SearchText(c["find"], false), out), out;
  if (operation == u"append_swapped at") return append_swapped(text, n, out), out;
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

TEST(DifferInCaseOnly, ComparesLettersAsUnicodeDoes) {
  EXPECT_TRUE(differ_in_case_only("\xC3\x89t\xC3\xA9", "\xC3\xA9T\xC3\x89"));
  EXPECT_FALSE(differ_in_case_only("same", "same") || differ_in_case_only("a", "b"));
}

}  // namespace
}  // namespace brindle::test
