#include "texts/string_table.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "texts/list_titles.h"

namespace brindle {
namespace {

// The placeholders of a format, in the order of the arguments they take.
std::vector<std::string> placeholders(std::string_view format) {
  std::vector<std::string> found;
  for (std::size_t at = format.find('%'); at != std::string_view::npos; at = format.find('%', at + 1)) {
    found.emplace_back(format.substr(at, format.find_first_of("@d%", at + 1) - at + 1));
  }
  std::ranges::sort(found);
  return found;
}

using Texts = std::map<std::string_view, StringEntry>;

Texts texts_of(const Language& language) {
  Texts texts;
  for (const StringSection section : language.strings().all()) {
    for (const StringEntry& entry : section) {
      EXPECT_TRUE(texts.emplace(entry.key, entry).second) << entry.key << " stands twice in " << language.name;
    }
  }
  return texts;
}

void expect_same_shape(std::string_view key, std::string_view english, std::string_view other) {
  EXPECT_EQ(placeholders(english), placeholders(other)) << key;
  EXPECT_EQ(english.ends_with('\n'), other.ends_with('\n')) << key;
}

TEST(StringTable, EveryLanguageHasTheTextsOfEnglishWithTheirPlaceholders) {
  const Texts english = texts_of(languages().front());
  for (const Language& language : languages()) {
    const Texts texts = texts_of(language);
    EXPECT_EQ(texts.size(), english.size()) << language.name;
    for (const auto& [key, entry] : english) {
      const auto found = texts.find(key);
      ASSERT_NE(found, texts.end()) << key << " is missing in " << language.name;
      EXPECT_TRUE(language.code == "en" || !found->second.text.empty()) << key << " is empty in " << language.name;
      expect_same_shape(key, entry.text.empty() ? key : entry.text,
                        found->second.text.empty() ? key : found->second.text);
      if (!found->second.one.empty()) expect_same_shape(key, entry.text, found->second.one);
    }
  }
}

class InLanguage : public testing::Test {
 protected:
  ~InLanguage() override { set_language(languages().front()); }
};

TEST_F(InLanguage, NumbersChooseThePluralForm) {
  EXPECT_EQ(localized_format("TOTALFILESFOUND", 1), "1 file found");
  EXPECT_EQ(localized_format("TOTALFILESFOUND", 0), "0 files found");
  EXPECT_EQ(localized_format("TIMETAKEN", localized("LOADINGTIME"), 1), "Loading: 1 s");
  set_language(languages()[1]);
  EXPECT_EQ(localized_format("TOTALFILESFOUND", 1), "1 Datei gefunden");
  EXPECT_EQ(localized_format("TOTALFILESFOUND", 21), "21 Dateien gefunden");
  EXPECT_EQ(localized_format("TOTALFOLDERSFOUND", 1), "1 Ordner gefunden");
  EXPECT_EQ(localized_format("PROFILELOADMESSAGE", "%d"), "Das Profil „%d“ anstelle des geöffneten öffnen?");
  EXPECT_EQ(localized("Padding Mask"), "Füllmaske");
  EXPECT_EQ(localized("no such key"), "no such key");
}

TEST(StringTable, FormatsTakeTheirArgumentsInOrderOrByPlace) {
  const std::vector<FormatArgument> two = {std::string_view("a%@"), std::int64_t{-7}};
  EXPECT_EQ(fill_format("%@ %d", two), "a%@ -7");
  EXPECT_EQ(fill_format("%2$d %1$@ 100%% %3$d %@ %x %", two), "-7 a%@ 100% %3$d a%@ %x %");
}

TEST(StringTable, TheEnvironmentChoosesTheLanguage) {
  struct Case {
    const char* language;
    const char* all;
    const char* messages;
    const char* lang;
    const char* expected;
  };
  constexpr Case cases[] = {
      {"", "", "", "", "en"},
      {"", "", "", "de_AT.UTF-8", "de"},
      {"", "", "de", "en_US.UTF-8", "de"},
      {"", "C", "de_DE", "de_DE", "en"},
      {"", "C.UTF-8", "", "de_DE", "en"},
      {"de:en", "POSIX", "", "", "en"},
      {"de", "C.UTF-8", "", "", "en"},
      {"fr:de_CH:en", "", "", "en_GB", "de"},
      {"fr", "", "", "de_DE@euro", "de"},
      {"en:de", "", "", "de_DE", "en"},
      {"::", "", "", "deu_DE", "en"},
      {"de", "", "", "", "en"},
  };
  for (const Case& c : cases) {
    ::setenv("LANGUAGE", c.language, 1);
    ::setenv("LC_ALL", c.all, 1);
    ::setenv("LC_MESSAGES", c.messages, 1);
    ::setenv("LANG", c.lang, 1);
    EXPECT_EQ(language_of_environment().code, c.expected)
        << c.language << ", " << c.all << ", " << c.messages << ", " << c.lang;
  }
}

TEST(StringTable, ListsAreKnownByTheirTitlesInEveryLanguage) {
  EXPECT_THAT(list_titles().newFilename, testing::ElementsAre(u"New Filename", u"Neuer Dateiname"));
  EXPECT_EQ(export_titles().location, "Location");
}

}  // namespace
}  // namespace brindle
