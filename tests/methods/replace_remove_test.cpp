#include "methods/replace_remove.h"

#include <algorithm>

#include "methods/sample_item.h"
#include "text/unicode_fold.h"

namespace brindle::test {
namespace {

/// The options without the choices that lead to them.
struct Options {
  std::u16string find;
  std::u16string with;
  bool exact = false;
  bool by_characters = false;
  std::int32_t start = 1;
  std::int32_t occurrence = 1;
  std::int32_t count = -1;
  std::int32_t direction = 0;
  std::int32_t type = 0;

  RenameSettings settings() const {
    RenameSettings settings;
    settings.isReplaceRemoveReplace = !by_characters;
    settings.isReplaceRemoveRemoveCharacters = by_characters;
    settings.replaceRemoveThis = find;
    settings.replaceRemoveWith = with;
    settings.isReplaceRemoveCaseSensitive = exact;
    settings.replaceRemoveStartFromCharacter = typed(start);
    settings.replaceRemoveStartOnOccurrence = typed(occurrence);
    settings.replaceRemoveOccuranceCount = typed(count);
    settings.replaceRemovePositionDirection = direction;
    settings.replaceRemoveRemoveType = type;
    return settings;
  }
};

TEST(ReplaceRemove, DoesAsTheTableSays) {
  for_each_case("replace_remove", [](const Case& c) {
    const Options options{
        c["this"],        c["with"],         c.flag("exact"),          c.has("type"),      c.number("start", 1),
        c.number("n", 1), c.number("k", -1), c.number("direction", 0), c.number("type", 0)};
    expect_case(c, ReplaceRemoveParameters(options.settings()));
  });
}

// The method again, step by step on copies, with no thought of speed.
std::u16string slow_transform(std::u16string work, const Options& a) {
  const std::u16string& find = a.find;
  const auto matches_at = [&](std::size_t i, std::u16string_view wanted) {
    const std::u16string_view part = std::u16string_view(work).substr(i, wanted.size());
    return a.exact ? part == wanted : folded(part) == folded(wanted);
  };
  if (a.by_characters && a.type == 0) {
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
  const std::int64_t n = a.occurrence;
  const std::int64_t k = a.count;
  const auto count = static_cast<std::int64_t>(starts.size());
  if (!a.by_characters) {
    const std::int64_t first = std::max<std::int64_t>(n, 1) - 1;
    const std::int64_t last = k == -1 ? count : k < 0 ? first : std::min(count, first + k);
    for (std::int64_t m = last; m-- > first;) work.replace(starts[static_cast<std::size_t>(m)], find.size(), a.with);
    return work;
  }
  if (n < 1 || count < n) return work;
  const std::size_t keep = a.type == 1 ? find.size() : 0;
  std::u16string result = work.substr(0, starts[static_cast<std::size_t>(n - 1)] + keep);
  const std::int64_t j = n + k - 1;
  if (j >= 0 && j < count) result += work.substr(starts[static_cast<std::size_t>(j)] + find.size() - keep);
  return result;
}

std::u16string slow_replace_remove(std::u16string base, const Options& a) {
  if (a.direction != 0) std::reverse(base.begin(), base.end());
  const auto start = static_cast<std::size_t>(std::max(a.start, 1));
  const std::size_t lead = start < base.size() ? start - 1 : 0;
  std::u16string result = base.substr(0, lead) + slow_transform(base.substr(lead), a);
  if (a.direction == 1) std::reverse(result.begin(), result.end());
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
    const Options options{find,          with,          random(2) == 0, random(2) == 0, number(-1, 16),
                          number(-1, 7), number(-3, 8), number(0, 3),   number(0, 4)};
    WorkingName name;
    name.base = base;
    renameByReplaceRemove(ReplaceRemoveParameters(options.settings()), name);
    ASSERT_EQ(to_utf8(name.result), to_utf8(slow_replace_remove(base, options)))
        << round << ": " << to_utf8(base) << " find " << to_utf8(find) << " type " << options.type;
  }
}

}  // namespace
}  // namespace brindle::test
