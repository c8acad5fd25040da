// No parameter, however odd, makes a method crash, hang, or answer without keeping the contract.

#include <array>
#include <iterator>
#include <limits>

#include "methods/date_time.h"
#include "methods/general.h"
#include "methods/insert_delete.h"
#include "methods/path_components.h"
#include "methods/prefix_suffix.h"
#include "methods/replace_remove.h"
#include "methods/sample_item.h"
#include "methods/sequence.h"

namespace brindle::test {
namespace {

/// Draws parameters: small and huge numbers, empty texts, patterns, halves of characters, what Windows forbids.
class Odd {
 public:
  bool flag() { return draw(2) == 0; }
  std::int32_t number() {
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t edges[] = {least, least + 1, most, most - 1, 65536, 27, 26, -1};
    return draw(3) == 0 ? edges[draw(std::size(edges))] : static_cast<std::int32_t>(draw(13)) - 2;
  }
  /// Valid until the next set of parameters.
  std::u16string_view text() {
    constexpr std::u16string_view pieces[] = {u"a",      u"A", u"/",     u":",    u".",    u"\xD83D",
                                              u"\xDE00", u"😀", u"None",  u"\x0",  u"yyyy", u"'",
                                              u"\xFFFF", u"é", u"*?<>|", u"\\\"", u"MMM",  u" "};
    std::u16string& made = texts_[next_text_++ % texts_.size()];
    made.clear();
    for (std::uint32_t left = draw(6); left > 0; --left) made += pieces[draw(std::size(pieces))];
    return made;
  }
  DateParts parts() { return {text(), text(), text(), text(), text(), text(), text(), text(), text(), text()}; }

 private:
  std::uint32_t draw(std::size_t bound) {
    return static_cast<std::uint32_t>((seed_ = seed_ * 1664525 + 1013904223) / 65536 % bound);
  }

  std::array<std::u16string, 32> texts_;
  std::size_t next_text_ = 0;
  std::uint32_t seed_ = 3;
};

// What the contract promises of every call.
template <class Rename>
void expect_contract(Odd& odd, Rename rename) {
  FileSystemItem item = sample_item(u"photo 1-a.jpg");
  const std::u16string before(odd.flag() ? std::u16string_view() : odd.text());
  item.setNewFilename(before);
  WorkingName name;
  std::u16string error;
  const bool succeeded = rename(item, name, error);
  EXPECT_EQ(succeeded, error.empty());
  EXPECT_TRUE(succeeded || item.newFilename() == before) << to_utf8(error);
  EXPECT_LT(item.newFilename().size(), 1'000'000U);
}

template <class Parameters, class Rename>
auto with(const Parameters& parameters, Rename rename) {
  return [&parameters, rename](FileSystemItem& item, WorkingName& name, std::u16string& error) {
    return rename(item, parameters, name, error);
  };
}

void try_all_methods(Odd& odd) {
  const auto t = [&odd] { return odd.text(); };
  const auto n = [&odd] { return odd.number(); };
  const auto f = [&odd] { return odd.flag(); };
  const Date date{std::chrono::milliseconds(std::int64_t{n()} * 1'000'000)};
  expect_contract(odd, with(InsertParameters({t(), n(), n(), n(), t(), n(), t(), n()}), renameByInsert));
  expect_contract(odd, with(DeleteParameters{f(), n(), n()}, renameByDelete));
  expect_contract(odd,
                  with(ReplaceRemoveParameters({t(), t(), f(), f(), n(), n(), n(), n(), n()}), renameByReplaceRemove));
  expect_contract(odd, with(PrefixSuffixParameters({t(), t(), f(), n(), f(), f(), odd.parts(), t(), t(), date}),
                            renameByPrefixSuffix));
  expect_contract(odd, with(DateTimeParameters({n(), date, n(), n(), n(), t(), n(), t(), n(), f(), f(), odd.parts(),
                                                f(), t(), t(), t(), t()}),
                            renameByDateTime));
  expect_contract(
      odd, with(GeneralParameters({n(), n(), n(), t(), t(), n(), t(), t(), n(), n(), t(), t()}), renameByGeneral));
  expect_contract(odd, with(PathComponentsParameters({n(), n(), n(), n(), t(), n(), t(), n(), t(), t(), t()}),
                            renameByPathComponents));
  const SequenceArguments sequence{f(), f(), f(), f(), f(), t(), t(), n(), n()};
  std::int32_t number = n();
  expect_contract(odd, [&, numeric = NumericParameters(sequence)](auto& item, auto& name, auto& error) {
    return renameByNumeric(item, numeric, number, name, error);
  });
  EXPECT_GE(number, 0);
  std::u16string letters(t());
  expect_contract(odd, [&, alphabetic = AlphabeticParameters(sequence)](auto& item, auto& name, auto& error) {
    return renameByAlphabetic(item, alphabetic, letters, name, error);
  });
}

TEST(OddParameters, KeepTheContract) {
  Odd odd;
  for (int round = 0; round < 3000 && !testing::Test::HasFailure(); ++round) try_all_methods(odd);
}

// A replacement that is itself full of what is to be replaced grows with every character; it must stop growing.
TEST(OddParameters, CannotMakeNamesGrowWithoutBound) {
  const std::u16string replacement(2000, u'|');
  std::u16string worse;
  for (int i = 0; i < 300; ++i) worse += u"\\:*?\"<>|";
  WorkingName name;
  name.base = u"a|b";
  general_text(GeneralParameters({.generalOptionIndex = 11, .generalConvertWindowsCompatibleString = replacement}),
               ItemType::file, name);
  EXPECT_EQ(name.result.size(), 2002U);
  name.base = u"a:b";
  EXPECT_THROW(
      general_text(GeneralParameters({.generalOptionIndex = 11, .generalConvertWindowsCompatibleString = worse}),
                   ItemType::file, name),
      std::length_error);
}

}  // namespace
}  // namespace brindle::test
