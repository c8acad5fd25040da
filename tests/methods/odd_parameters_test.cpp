// No parameter, however odd, makes a method crash, hang, or answer without keeping the contract.

#include <array>
#include <iterator>
#include <limits>

#include "methods/general.h"
#include "methods/method_table.h"
#include "methods/rename_plan.h"
#include "methods/sample_item.h"

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
  std::u16string text() {
    constexpr std::u16string_view pieces[] = {u"a",      u"A", u"/",     u":",    u".",    u"\xD83D",
                                              u"\xDE00", u"😀", u"None",  u"\x0",  u"yyyy", u"'",
                                              u"\xFFFF", u"é", u"*?<>|", u"\\\"", u"MMM",  u" "};
    std::u16string made;
    for (std::uint32_t left = draw(6); left > 0; --left) made += pieces[draw(std::size(pieces))];
    return made;
  }

  // A setting of any type; numbers that are kept as texts are among the texts.
  void fill(bool& value) { value = flag(); }
  void fill(std::int32_t& value) { value = number(); }
  void fill(Text& value) { value = draw(4) == 0 ? decimal_text(number()) : draw(8) == 0 ? Text() : Text(text()); }
  void fill(Date& value) { value = Date(std::chrono::milliseconds(std::int64_t{number()} * 1'000'000)); }
  void fill(TextList& value) { value = {u".JPG", text()}; }
  void fill(FieldList& value) {
    value.clear();
    for (const char16_t* token : {u"<Artist>", u"<FILEINFO_Filename>", u"<SEQUENCES_Number_Sequence>"}) {
      value.push_back({u"", u"", flag() ? std::u16string(token) : text(), u"", u""});
    }
  }

 private:
  std::uint32_t draw(std::size_t bound) {
    return static_cast<std::uint32_t>((seed_ = seed_ * 1664525 + 1013904223) / 65536 % bound);
  }

  std::uint32_t seed_ = 3;
};

// What the contract promises of every call.
void expect_contract(Odd& odd, RenamePlan& plan) {
  FileSystemItem item = sample_item(u"photo 1-a.jpg");
  const std::u16string before = odd.flag() ? std::u16string() : odd.text();
  item.setNewFilename(before);
  std::u16string error;
  const bool succeeded = plan.run(item, error);
  EXPECT_EQ(succeeded, error.empty());
  EXPECT_TRUE(succeeded || item.newFilename() == before) << to_utf8(error);
  EXPECT_LT(item.newFilename().size(), 1'000'000U);
}

// Every method with whatever the settings may hold; several items, so that counters move.
TEST(OddParameters, KeepTheContract) {
  Odd odd;
  for (int round = 0; round < 3000 && !testing::Test::HasFailure(); ++round) {
    RenameSettings settings;
    for (const SettingRow& row : settings_table()) {
      visit_member(row, settings, [&odd](auto& member) { odd.fill(member); });
    }
    for (const MethodRow* method : method_table()) {
      settings.selectedTab = tab_of(method->method);
      SCOPED_TRACE(method->title);
      RenamePlan plan(settings, settings.dateTimeCustomDate);
      for (int item = 0; item < 3; ++item) expect_contract(odd, plan);
    }
  }
}

// A replacement that is itself full of what is to be replaced grows with every character; it must stop growing.
TEST(OddParameters, CannotMakeNamesGrowWithoutBound) {
  const std::u16string replacement(2000, u'|');
  std::u16string worse;
  for (int i = 0; i < 300; ++i) worse += u"\\:*?\"<>|";
  RenameSettings settings;
  settings.generalOptionIndex = static_cast<std::int32_t>(GeneralOption::convert_windows_compatible);
  settings.generalConvertWindowsCompatibleString = replacement;
  WorkingName name;
  name.base = u"a|b";
  renameByGeneral(GeneralParameters(settings), ItemType::file, name);
  EXPECT_EQ(name.result.size(), 2002U);
  settings.generalConvertWindowsCompatibleString = worse;
  name.base = u"a:b";
  EXPECT_THROW(renameByGeneral(GeneralParameters(settings), ItemType::file, name), std::length_error);
}

}  // namespace
}  // namespace brindle::test
