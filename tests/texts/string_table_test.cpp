#include "texts/string_table.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <ranges>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "platform/translation.h"
#include "texts/list_titles.h"
#include "texts/plural_rule.h"
#include "texts/shown_text.h"

namespace brindle {
namespace {

// What a format takes from its arguments, each placeholder with its place: "%1$d %2$@" is "%d %@", "{1} {0}" is "{}
// {}".
std::vector<std::string> placeholders(std::string_view format) {
  static const std::regex pattern(R"(%(?:(\d)\$)?([@d%])|\{(\d?)\})");
  std::vector<std::string> found;
  const std::string text(format);
  std::size_t next = 1;
  for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at) {
    const std::smatch& match = *at;
    std::string place = match[1].str();
    if (match[3].length() > 0) place = std::to_string(std::stoi(match[3]) + 1);
    if (match[2] != "%") found.push_back((place.empty() ? std::to_string(next++) : place) + match[2].str());
  }
  std::ranges::sort(found);
  return found;
}

void expect_same_shape(std::string_view english, std::string_view other) {
  EXPECT_EQ(placeholders(english), placeholders(other)) << english;
  EXPECT_EQ(english.ends_with('\n'), other.ends_with('\n')) << english;
}

std::vector<std::string> forms_of(std::string_view texts) {
  std::vector<std::string> forms;
  for (const auto form : std::views::split(texts, '\0')) forms.emplace_back(form.begin(), form.end());
  return forms;
}

TEST(Catalogues, KeepThePlaceholdersAndLinesOfEnglish) {
  for (const Language& language : languages()) {
    for (std::size_t i = 1; i < language.catalogue.size(); ++i) {
      const std::string_view original = language.catalogue.original(i);
      const std::vector<std::string> english = forms_of(original.substr(original.find('\4') + 1));
      for (const std::string& form : forms_of(language.catalogue.translation(i)))
        expect_same_shape(english.back(), form);
      expect_same_shape(english.front(), english.back());
    }
  }
}

TEST(Catalogues, FindEachOfTheirTextsAndNothingElse) {
  const Language& german = *find_language("de");
  EXPECT_EQ(german.name, "Deutsch");
  ASSERT_GT(german.catalogue.size(), 700U);
  for (std::size_t i = 1; i < german.catalogue.size(); ++i) {
    const std::string english = forms_of(german.catalogue.original(i)).front();
    const std::size_t end = english.find('\4') + 1;  // 0 without a context
    const auto found = german.catalogue.find(english.substr(0, end == 0 ? 0 : end - 1), english.substr(end));
    ASSERT_TRUE(found) << english;
    EXPECT_EQ(found->data(), german.catalogue.translation(i).data()) << english;
  }
  for (const auto* nothing : {"", "zzz", "No such sentence", "Permission denie", "Permission denied "})
    EXPECT_FALSE(german.catalogue.find("", nothing)) << nothing;
  EXPECT_FALSE(german.catalogue.find("ABORT", "Cancel"));
  EXPECT_FALSE(Catalogue().find("ABORT", "Abort"));
}

struct PluralRule {
  const char* language;
  const char* rule;
  std::vector<std::pair<std::uint64_t, std::size_t>> forms;
};

TEST(PluralRules, ChooseTheFormThatALanguageTakes) {
  const PluralRule rules[] = {
      {"de", "nplurals=2; plural=(n != 1);\n", {{0, 1}, {1, 0}, {2, 1}, {21, 1}}},
      {"fr", "nplurals=2; plural=n>1;", {{0, 0}, {1, 0}, {2, 1}}},
      {"ja", "nplurals=1; plural=0;", {{0, 0}, {1, 0}, {5, 0}}},
      {"pl",
       "nplurals=3; plural=(n==1 ? 0 : n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20) ? 1 : 2);",
       {{0, 2}, {1, 0}, {2, 1}, {4, 1}, {5, 2}, {12, 2}, {14, 2}, {21, 2}, {22, 1}, {112, 2}, {122, 1}}},
      {"ru",
       "nplurals=3; plural=(n%10==1 && n%100!=11 ? 0 : n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20) ? 1 : 2);",
       {{0, 2}, {1, 0}, {2, 1}, {5, 2}, {11, 2}, {21, 0}, {24, 1}, {111, 2}, {101, 0}}},
      {"sl",
       "nplurals=4; plural=n%100==1 ? 0 : n%100==2 ? 1 : n%100==3 || n%100==4 ? 2 : 3;",
       {{1, 0}, {102, 1}, {4, 2}, {5, 3}}},
      {"of C", "plural=!(n-7) + 2*3-12/4%2", {{7, 6}, {8, 5}}},
      {"no sense", "plural=n/0", {{7, 0}}},
      {"nothing", "", {{7, 0}}},
  };
  for (const PluralRule& rule : rules)
    for (const auto& [number, form] : rule.forms)
      EXPECT_EQ(plural_form(rule.rule, number), form) << rule.language << " " << number;
}

class InLanguage : public testing::Test {
 protected:
  ~InLanguage() override { set_language(languages().front()); }
};

TEST_F(InLanguage, NumbersChooseThePluralForm) {
  EXPECT_EQ(localized_format("TOTALFILESFOUND", 1), "1 file found");
  EXPECT_EQ(localized_format("TOTALFILESFOUND", 0), "0 files found");
  EXPECT_EQ(localized_format("TIMETAKEN", localized("LOADINGTIME"), 1), "Loading: 1 s");
  set_language(*find_language("de"));
  EXPECT_EQ(localized_format("TOTALFILESFOUND", 1), "1 Datei gefunden");
  EXPECT_EQ(localized_format("TOTALFILESFOUND", 21), "21 Dateien gefunden");
  EXPECT_EQ(localized_format("TOTALFOLDERSFOUND", 1), "1 Ordner gefunden");
  EXPECT_EQ(localized_format("PROFILELOADMESSAGE", "%d"), "Das Profil „%d“ anstelle des geöffneten öffnen?");
  EXPECT_EQ(localized("Padding Mask"), "Füllmaske");
  EXPECT_EQ(localized("no such key"), "no such key");
  EXPECT_EQ(localized(""), "");
}

TEST_F(InLanguage, MnemonicsAreForThoseWhoAskForThem) {
  EXPECT_EQ(localized_with_mnemonic("SHEETHELP"), "&Help");
  EXPECT_EQ(localized("SHEETHELP"), "Help");
  EXPECT_EQ(localized("“a&b” & “c&d”: no such file"), "“a&b” & “c&d”: no such file");
  set_language(*find_language("de"));
  EXPECT_EQ(localized_with_mnemonic("SHEETHELP"), "&Hilfe");
  EXPECT_EQ(localized("SHEETHELP"), "Hilfe");
}

TEST_F(InLanguage, SentencesAreTranslatedWithTheirValuesFilledIn) {
  const auto left_out = [](int count) {
    return translated_count(static_cast<std::uint64_t>(count), "{} item", "{} items", count);
  };
  EXPECT_EQ(translated("Permission denied"), "Permission denied");
  EXPECT_EQ(translated("“{}” of {}", "{a}", 7), "“{a}” of 7");
  EXPECT_EQ(left_out(1), "1 item");
  EXPECT_EQ(left_out(0), "0 items");
  set_language(*find_language("de"));
  EXPECT_EQ(translated("Permission denied"), "Keine Berechtigung");
  EXPECT_EQ(translated("no such sentence, {}", "{}"), "no such sentence, {}");
  EXPECT_EQ(translated(""), "");
  EXPECT_EQ(fill_sentence("{1} {0}", std::vector<std::string>{"a", "b"}), "b a");
  const std::string reason = "Unable to generate the new file name: the file's date cannot be read: ";
  EXPECT_EQ(reason_in_words(reason + "“a: b”"),
            "Der neue Name ließ sich nicht bilden: das Datum der Datei lässt sich nicht lesen: “a: b”");
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
      {"xx:de_CH:en", "", "", "en_GB", "de"},
      {"xx", "", "", "de_DE@euro", "de"},
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
  EXPECT_THAT(list_titles().newFilename, testing::IsSupersetOf({u"New Filename", u"Neuer Dateiname"}));
  EXPECT_EQ(export_titles().location, "Location");
}

}  // namespace
}  // namespace brindle
