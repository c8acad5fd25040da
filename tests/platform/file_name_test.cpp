#include "platform/file_name.h"

#include <gtest/gtest.h>

#include <random>

namespace brindle {
namespace {

std::string encoded(std::u16string_view name, std::size_t limit = 255) {
  std::string bytes;
  return encode_file_name(name, bytes, limit) == NameFault::none ? bytes : "(refused)";
}

struct Known {
  std::string bytes;
  std::u16string text;
};

TEST(FileName, DecodesWhatPeopleAndDisksMake) {
  const Known cases[] = {
      {"photo.jpg", u"photo.jpg"},
      {"Zo\xC3\xAB", u"Zo\u00EB"},
      {"\xE6\x97\xA5\xE6\x9C\xAC", u"\u65E5\u672C"},
      {"\xF0\x9F\x98\x80.png", u"\U0001F600.png"},
      {"caf\xE9", u"caf\uEFE9"},                          // Latin-1
      {"\xC0\xAF", u"\uEFC0\uEFAF"},                      // overlong "/"
      {"\xED\xA0\x80", u"\uEFED\uEFA0\uEF80"},            // a surrogate in UTF-8
      {"\xF4\x90\x80\x80", u"\uEFF4\uEF90\uEF80\uEF80"},  // beyond U+10FFFF
      {"\xEE\xBE\x80", u"\uEFEE\uEFBE\uEF80"},            // U+EF80 itself
      {"\xE2\x82", u"\uEFE2\uEF82"},                      // cut short
      {"a\n\x01\x7F", u"a\n\x01\x7F"},
  };
  for (const Known& known : cases) {
    EXPECT_EQ(decode_file_name(known.bytes), known.text) << known.bytes;
    EXPECT_EQ(encoded(known.text), known.bytes);
  }
}

TEST(FileName, EveryByteStringComesBack) {
  std::mt19937 random(1);
  const std::string lively =
      "\xC3\xA9\xE2\x82\xAC\xEE\xBE\x80\xEF\xBF\xBD\xF0\x9F\x98\x80\xED\xA0\x80\xFF"
      "aZ.";
  for (int round = 0; round < 20000; ++round) {
    std::string bytes;
    for (auto length = 1 + random() % 24; length > 0; --length) {
      bytes.push_back(random() % 2 == 0 ? lively[random() % lively.size()] : static_cast<char>(1 + random() % 255));
    }
    if (bytes == "." || bytes == ".." || bytes.find('/') != std::string::npos) continue;
    ASSERT_EQ(encoded(decode_file_name(bytes)), bytes);
  }
}

TEST(FileName, RefusesWhatNoDiskCanHold) {
  const std::u16string high(1, char16_t{0xD83D});
  const std::u16string low(1, char16_t{0xDE00});
  const std::pair<std::u16string, NameFault> cases[] = {
      {u"", NameFault::empty},
      {u".", NameFault::dot},
      {u"..", NameFault::dot},
      {u"a/b", NameFault::separator},
      {std::u16string(u"a\0b", 3), NameFault::nul},
      {u"a" + high, NameFault::unpaired_surrogate},
      {low + u"a", NameFault::unpaired_surrogate},
      {low + high, NameFault::unpaired_surrogate},
      {high + high + low, NameFault::unpaired_surrogate},
      {std::u16string(256, u'x'), NameFault::too_long},
      {std::u16string(128, u'\u00E9'), NameFault::too_long},
      {std::u16string(255, u'x'), NameFault::none},
      {u"...", NameFault::none},
      {high + low, NameFault::none},
  };
  std::string bytes;
  for (const auto& [name, fault] : cases) EXPECT_EQ(encode_file_name(name, bytes, 255), fault) << to_utf8(name);
}

TEST(FileName, MessagesAreAlwaysValidText) {
  EXPECT_EQ(to_utf8(u"a\u00E9\U0001F600"), "a\xC3\xA9\xF0\x9F\x98\x80");
  EXPECT_EQ(to_utf8(std::u16string(1, char16_t{0xDC00})), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace brindle
