#include "methods/replace_remove.h"

#include <algorithm>

#include "methods/sample_item.h"
#include "text/unicode_fold.h"

namespace brindle::test {
namespace {

TEST(ReplaceRemove, DoesAsTheTableSays) {
  for_each_case("replace_remove", [](const Case& c) {
    const ReplaceRemoveParameters parameters({.replaceThis = c["this"],
                                              .replaceWith = c["with"],
                                              .caseSensitive = c.flag("exact"),
                                              .removeCharacters = c.has("type"),
                                              .startFromCharacter = c.number("start", 1),
                                              .startOnOccurrence = c.number("n", 1),
                                              .occurrenceCount = c.number("k", -1),
                                              .replaceRemovePositionDirection = c.number("direction", 0),
                                              .replaceRemoveRemoveType = c.number("type", 0)});
    expect_case(c, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
      return renameByReplaceRemove(item, parameters, name, error);
    });
  });
}

// The method again, step by step on copies, with no thought of speed.
std::u16string slow_transform(std::u16string work, const ReplaceRemoveArguments& a) {
  const std::u16string find(a.replaceThis);
  const auto matches_at = [&](std::size_t i, std::u16string_view wanted) {
    const std::u16string_view part = std::u16string_view(work).substr(i, wanted.size());
    return a.caseSensitive ? part == wanted : folded(part) == folded(wanted);
  };
  if (a.removeCharacters && a.replaceRemoveRemoveType == 0) {
    for (const char16_t& unwanted : find) {
      for (std::size_t i = 0; i < work.size();) {
        if (matches_at(i, {&unwanted, 1}))
          work.erase(i, 1);
        else
          ++i;
      }
    }
    return work;
  }
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; !find.empty() && i + find.size() <= work.size();) {
    const bool match = matches_at(i, find);
    if (match) starts.push_back(i);
    i += match ? find.size() : 1;
  }
  const std::int64_t n = a.startOnOccurrence;
  const std::int64_t k = a.occurrenceCount;
  const auto count = static_cast<std::int64_t>(starts.size());
  if (!a.removeCharacters) {
    const std::int64_t first = std::max<std::int64_t>(n, 1) - 1;
    const std::int64_t last = k == -1 ? count : k < 0 ? first : std::min(count, first + k);
    for (std::int64_t m = last; m-- > first;)
      work.replace(starts[static_cast<std::size_t>(m)], find.size(), a.replaceWith);
    return work;
  }
  if (n < 1 || count < n) return work;
  const std::size_t keep = a.replaceRemoveRemoveType == 1 ? find.size() : 0;
  std::u16string result = work.substr(0, starts[static_cast<std::size_t>(n - 1)] + keep);
  const std::int64_t j = n + k - 1;
  if (j >= 0 && j < count) result += work.substr(starts[static_cast<std::size_t>(j)] + find.size() - keep);
  return result;
}

std::u16string slow_replace_remove(std::u16string base, const ReplaceRemoveArguments& a) {
  if (a.replaceRemovePositionDirection != 0) std::reverse(base.begin(), base.end());
  const auto start = static_cast<std::size_t>(std::max(a.startFromCharacter, 1));
  const std::size_t lead = start < base.size() ? start - 1 : 0;
  std::u16string result = base.substr(0, lead) + slow_transform(base.substr(lead), a);
  if (a.replaceRemovePositionDirection == 1) std::reverse(result.begin(), result.end());
  return result;
}

TEST(ReplaceRemove, AgreesWithTheSlowWay) {
  std::uint32_t seed = 7;
  const auto random = [&seed](std::uint32_t bound) { return (seed = seed * 1664525 + 1013904223) / 65536 % bound; };
  const auto number = [&](std::int32_t least, std::uint32_t bound) {
    return least + static_cast<std::int32_t>(random(bound));
  };
  const auto random_text = [&](std::uint32_t longest) {
    std::u16string text(random(longest + 1), u'\0');
    for (char16_t& unit : text) unit = u"aAb-"[random(4)];
    return text;
  };
  for (int round = 0; round < 40000; ++round) {
    const std::u16string base = random_text(12);
    const std::u16string find = random_text(3);
    const std::u16string with = random_text(2);
    const ReplaceRemoveArguments arguments{.replaceThis = find,
                                           .replaceWith = with,
                                           .caseSensitive = random(2) == 0,
                                           .removeCharacters = random(2) == 0,
                                           .startFromCharacter = number(-1, 16),
                                           .startOnOccurrence = number(-1, 7),
                                           .occurrenceCount = number(-3, 8),
                                           .replaceRemovePositionDirection = number(0, 3),
                                           .replaceRemoveRemoveType = number(0, 4)};
    WorkingName name;
    name.base = base;
    replace_remove(ReplaceRemoveParameters(arguments), name);
    ASSERT_EQ(to_utf8(name.result), to_utf8(slow_replace_remove(base, arguments)))
        << round << ": " << to_utf8(base) << " find " << to_utf8(find) << " type " << arguments.replaceRemoveRemoveType;
  }
}

}  // namespace
}  // namespace brindle::test
