#include "texts/shown_text.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/file_name.h"

namespace brindle::test {
namespace {

struct Shown {
  std::u16string name;
  std::u16string shown;
};

TEST(ShownText, SpellsOutWhatWouldBreakTurnOrOverdrawALine) {
  const std::u16string marks(5, u'\u0301');
  const Shown cases[] = {
      {u"IMG 12 – Brest & Ärmel.jpg", u"IMG 12 – Brest & Ärmel.jpg"},
      {u"<b>x</b>", u"<b>x</b>"},
      {u"a\nb\tc\x7F\u0085\u0090\u2028", u"a␊b␉c␡␤\uFFFD␤"},
      {u"\uEF80\uEFFF", u"\uFFFD\uFFFD"},
      {u"\u202Egpj.exe", u"‹RLO›gpj.exe"},
      {u"\u202A\u202B\u202C\u202D\u2066\u2067\u2068\u2069\u061C\u200E\u200F",
       u"‹LRE›‹RLE›‹PDF›‹LRO›‹LRI›‹RLI›‹FSI›‹PDI›‹ALM›‹LRM›‹RLM›"},
      {u"שלום.txt", u"שלום.txt"},
      {u"👩‍🚀 ❤️", u"👩‍🚀 ❤️"},
      {u"o" + marks, u"o" + marks},
      {u"o" + marks + marks + u"k" + marks + marks + marks,
       u"o" + marks + u"\u0301\u0301\u0301‹+2›k" + marks + u"\u0301\u0301\u0301‹+7›"},
      {std::u16string(u"\U0001D165") + std::u16string(20, u'\u20DD'),
       std::u16string(u"\U0001D165") + std::u16string(8, u'\u20DD') + u"‹+12›"},
  };
  for (const auto& [name, shown] : cases) {
    EXPECT_EQ(to_utf8(in_one_line(name)), to_utf8(shown));
    EXPECT_TRUE(!is_plain_line(name) || name == shown) << to_utf8(name);
  }
}

TEST(ShownText, KeepsANameApartFromTheSentenceAroundIt) {
  EXPECT_EQ(in_sentence(u"a.txt"), "a.txt");
  EXPECT_EQ(in_sentence(u"א.txt"), "\u2068א.txt\u2069");
  // A name cannot leave the place that it is kept in.
  EXPECT_EQ(in_sentence(u"\u2069\u202E\n"), "\u2068‹PDI›‹RLO›␊\u2069");
  EXPECT_EQ(in_lines(u"one\n\u2068א\u2069\u202E\t"), u"one\n\u2068א\u2069‹RLO›␉");
}

}  // namespace
}  // namespace brindle::test
