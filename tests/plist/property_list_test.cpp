#include "plist/property_list.h"

#include <gmock/gmock.h>

#include <cmath>

#include "settings/sample_list.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using namespace std::string_literals;
using Array = PropertyValue::Array;

std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

std::string in_plist(const std::string& content) {
  return "<plist version=\"1.0\">" + content + "</plist>";
}

PropertyValue read(std::string_view bytes) {
  Result<PropertyList> list = read_property_list(bytes);
  EXPECT_EQ(list.reason(), "") << bytes.substr(0, 200);
  return list.ok() ? list->value : PropertyValue();
}

std::string wide(std::u16string_view text, bool marked) {
  std::string bytes(marked ? "\xFE\xFF" : "");
  for (const char16_t c : text) bytes.append({static_cast<char>(c >> 8U), static_cast<char>(c & 0xFFU)});
  return bytes;
}

PropertyDictionary with_entry(std::u16string_view key, PropertyValue value) {
  PropertyDictionary dictionary;
  dictionary.append(key, std::move(value));
  return dictionary;
}

TEST(PropertyList, ComesBackFromBothForms) {
  // Whatever XML cannot write, the mark that stands for it, and things that only look like it.
  const Array odd = {u"\x1B[0m\x7F\x85",
                     u"\xFFFE\xFFFF",
                     std::u16string(1, u'\0'),
                     std::u16string{0xD83D},
                     std::u16string{0xDE00, 0xD83D, u'x'},
                     u"\xEF7F"
                     u"001B",
                     u"\xEF7F\xEF7Fzz",
                     u"\xEF7F"
                     u"00",
                     with_entry(u"\x01\r", PropertyUid{70000}),
                     -0.0,
                     INFINITY,
                     -INFINITY};
  for (const PropertyValue& value : {sample_list(), PropertyValue(odd), PropertyValue(u""), PropertyValue(12)}) {
    const std::string xml = write_xml_property_list(value);
    EXPECT_EQ(read(xml), value) << xml;
    EXPECT_EQ(write_xml_property_list(read(xml)), xml);
    const std::string binary = write_binary_property_list(value);
    EXPECT_EQ(read(binary), value);
    EXPECT_EQ(write_binary_property_list(read(binary)), binary);
  }
  EXPECT_TRUE(std::isnan(*read(write_xml_property_list(NAN)).get_if<double>()));
}

TEST(PropertyList, KeepsMillisecondsInTheBinaryFormOnly) {
  for (const int time : {1500, -1500, 978307200}) {
    const Date date{std::chrono::milliseconds(time)};
    EXPECT_EQ(read(write_binary_property_list(date)), PropertyValue(date));
    EXPECT_EQ(read(write_xml_property_list(date)), PropertyValue(Date(std::chrono::floor<std::chrono::seconds>(date))));
  }
  EXPECT_EQ(read(write_xml_property_list(Date::max())), read(in_plist("<date>9999-12-31T23:59:59Z</date>")));
}

TEST(PropertyList, ReadsWhatOthersWrite) {
  const struct {
    std::string xml;
    PropertyValue value;
  } cases[] = {
      {"\xEF\xBB\xBF<?xml version='1.0'?><!-- c --><plist>\n<true></true> <!-- > --></plist>\n<!-- end -->", true},
      {wide(u"<?xml version=\"1.0\" encoding=\"UTF-16\"?><plist><string>ü</string></plist>", true), u"ü"},
      {wide(u"<plist><string>\U0001F600</string></plist>", false), u"\U0001F600"},
      {"<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><plist><string>\xFC</string></plist>", u"ü"},
      {"<!DOCTYPE plist SYSTEM 'a>b'>" + in_plist("<false />"), false},
      {in_plist("<string>a<!-- b -->c<![CDATA[<d>&amp;]]>&lt;&#101;&#x1F600;&quot;&apos;</string>"),
       u"ac<d>&amp;<e\U0001F600\"'"},
      {in_plist("<string>\r\na\rb&#13;</string>"), u"\na\nb\r"},
      {in_plist("<string>\x1B&#27;</string>"), u"\x1B\x1B"},
      {in_plist("<string/>"), u""},
      {in_plist("<integer> +12\n</integer>"), 12},
      {in_plist("<integer>-0x1F</integer>"), -31},
      {in_plist("<integer>18446744073709551615</integer>"), 18446744073709551615.0},
      {in_plist("<real>1</real>"), 1.0},
      {in_plist("<real>+Infinity</real>"), INFINITY},
      {in_plist("<date>1970-01-01T00:00:01Z</date>"), Date(std::chrono::seconds(1))},
      {in_plist("<date>1970-02Z</date>"), Date(std::chrono::days(31))},
      {in_plist("<data>\n\tQU\n\tJD RA\n</data>"), PropertyValue::Data{'A', 'B', 'C', 'D'}},
      {in_plist("<data></data>"), PropertyValue::Data{}},
      {in_plist("<dict><key>a</key><integer>1</integer><key>b</key><true/><key>a</key><string>z</string></dict>"),
       [] {
         PropertyDictionary dictionary = with_entry(u"a", u"z");
         dictionary.append(u"b", true);
         return dictionary;
       }()},
      {in_plist("<dict><key>CF$UID</key><integer>3</integer></dict>"), PropertyUid{3}},
      {in_plist(repeated("<array>", 128) + repeated("</array>", 128)),
       [] {
         Array value;
         for (int i = 1; i < 128; ++i) value = Array{PropertyValue(std::move(value))};
         return value;
       }()},
  };
  for (const auto& c : cases) EXPECT_EQ(read(c.xml), c.value) << c.xml;
}

TEST(PropertyList, RefusesDamagedXmlAndSaysWhere) {
  const struct {
    std::string xml;
    const char* error;
  } cases[] = {
      {"", "empty"},
      {"{ a = b; }", "line 1: it is no XML"},
      {" \n", "no XML"},
      {"<plist>\n<dict>\n<key>a</key></dict></plist>", "line 3: a key has no value"},
      {"<html></html>", "“html” where “plist” is expected"},
      {in_plist(""), "holds no value"},
      {in_plist("<true/><true/>"), "where no value can be"},
      {in_plist("<true/>") + in_plist("<true/>"), "second root"},
      {in_plist("<true/>") + "x", "behind the root"},
      {in_plist("x<true/>"), "text outside"},
      {in_plist("<set/>"), "“set” is none of a property list's"},
      {in_plist("<array><true/></dict>"), "“dict” ends where “array” is open"},
      {in_plist("<dict><true/></dict>"), "where no value can be"},
      {in_plist("<dict><key>a</key><key>b</key></dict>"), "a key stands"},
      {in_plist("<key>a</key>"), "a key stands"},
      {in_plist("<string><b/></string>"), "element within a value"},
      {in_plist("<string>&nbsp;</string>"), "references"},
      {in_plist("<string>a & b</string>"), "references"},
      {in_plist("<string>&#0;</string>"), "references"},
      {in_plist("<string>&#xD800;</string>"), "references"},
      {in_plist("<string>\xFF</string>"), "UTF-8"},
      {wide(u"<plist><string>\xD800</string></plist>", true), "UTF-16"},
      {"<?xml version=\"1.0\" encoding=\"EBCDIC\"?>" + in_plist("<true/>"), "save it as UTF-8"},
      {"<!DOCTYPE plist [<!ENTITY a \"aaaa\">]>" + in_plist("<string>&a;</string>"), "document type of its own"},
      {"<plist><string>abc", "ends within the element “string”"},
      {"<plist><!-- abc", "does not end"},
      {"<plist a=b><true/></plist>", "attribute"},
      {"<plist a=\"b\"c=\"d\"><true/></plist>", "attribute"},
      {in_plist("<integer>12a</integer>"), "“integer”"},
      {in_plist("<integer/>"), "“integer”"},
      {in_plist("<integer>--1</integer>"), "“integer”"},
      {in_plist("<real>1,5</real>"), "“real”"},
      {in_plist("<date>2026-02-30T00:00:00Z</date>"), "“date”"},
      {in_plist("<date>2026-02-03</date>"), "“date”"},
      {in_plist("<data>A</data>"), "“data”"},
      {in_plist("<data>QQ==QQ==</data>"), "“data”"},
      {in_plist("<true>1</true>"), "“true”"},
      {in_plist(repeated("<array>", 129)), "too deeply"},
      {in_plist(repeated("<a>", 100000)), "none of a property list's"},
  };
  for (const auto& c : cases) {
    EXPECT_THAT(read_property_list(c.xml).reason(), testing::HasSubstr(c.error)) << c.xml.substr(0, 100);
  }
}

// A binary list of objects as they stand in the file, with references and offsets of `width` bytes.
std::string binary_list(const std::vector<std::string>& objects, std::size_t width = 1) {
  const auto number = [](std::size_t value, std::size_t size) {
    std::string bytes;
    for (std::size_t i = size; i > 0; --i) bytes += i > 8 ? '\0' : static_cast<char>(value >> (i - 1) * 8U);
    return bytes;
  };
  std::string bytes = "bplist00";
  std::string table;
  for (const std::string& object : objects) {
    table += number(bytes.size(), width);
    bytes += object;
  }
  const std::size_t start = bytes.size();
  return bytes + table + number(width, 7) + number(width, 1) + number(objects.size(), 8) + number(0, 8) +
         number(start, 8);
}

TEST(PropertyList, ReadsEveryBinaryForm) {
  const struct {
    std::string bytes;
    PropertyValue value;
  } cases[] = {
      {binary_list({"\xA1\0\0\1"s, "\x09"}, 3), Array{true}},
      {binary_list({"\xA1\0\0\0\0\0\0\0\1"s, "\x08"}, 8), Array{false}},
      {binary_list({"\x10\xFF"}), 255},
      {binary_list({"\x12\xFF\xFF\xFF\xFF"}), 4294967295},
      {binary_list({"\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE"}), -2},
      {binary_list({"\x14" + std::string(16, '\xFF')}), -1},
      {binary_list({"\x14" + std::string(8, '\0') + std::string(8, '\xFF')}), 18446744073709551615.0},
      {binary_list({"\x22\x3F\xC0\0\0"s}), 1.5},
      {binary_list({"\x6F\x10\x01\x00\xFC"s}), u"ü"},
      {binary_list({"\x83\0\1\0\0"s}), PropertyUid{65536}},
      {binary_list({"\xA2\1\1", "\x51x"}), Array{u"x", u"x"}},
      {binary_list({"\xD2\1\1\1\2", "\x51x", "\x09"}), with_entry(u"x", true)},
  };
  for (const auto& c : cases) EXPECT_EQ(read(c.bytes), c.value);
}

TEST(PropertyList, RefusesDamagedBinary) {
  const struct {
    std::string bytes;
    const char* error;
  } cases[] = {
      {"bplist15", "version"},
      {"bplist00", "cut off"},
      {binary_list({"\x09"}, 9), "trailer"},
      {binary_list({}), "does not hold"},
      {binary_list({"\xA1\1"}), "does not hold"},
      {binary_list({"\xA1\0"s}), "holds itself"},
      {binary_list({"\xA1\1", "\xA1\0"s}), "holds itself"},
      {binary_list({"\xD1\1\0"s, "\x51x"}), "holds itself"},
      {binary_list({"\xD1\1\1", "\x09"}), "no text"},
      {binary_list({"\xAF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}), "damaged"},
      {binary_list({"\xDF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}), "damaged"},
      {binary_list({"\x6F\x13\x80\0\0\0\0\0\0\0"s}), "damaged"},
      {binary_list({"\x5F"}), "damaged"},
      {binary_list({"\x52x"}), "damaged"},
      {binary_list({"\x51\xFC"}), "damaged"},
      {binary_list({"\x13\0"s}), "damaged"},
      {binary_list({"\x88" + std::string(9, '\0')}), "damaged"},
      {binary_list({"\x33\x7F\xF8\0\0\0\0\0\0"s}), "date"},
      {binary_list({"\x33\x7E\0\0\0\0\0\0\0"s}), "date"},
      {binary_list({"\0"s}), "not known"},
      {binary_list({"\xC0"}), "not known"},
  };
  for (const auto& c : cases) {
    EXPECT_THAT(read_property_list(c.bytes).reason(), testing::HasSubstr(c.error))
        << testing::PrintToString(c.bytes.substr(0, 60));
  }
}

TEST(PropertyList, ReadsNoMoreThanItsBudget) {
  std::vector<std::string> doubling;
  for (char i = 1; i < 60; ++i) doubling.push_back({'\xA2', i, i});
  doubling.emplace_back("\xA0");
  const struct {
    std::string bytes;
    std::size_t values;
    std::size_t text_bytes;
    const char* error;
  } cases[] = {
      {in_plist("<array>" + repeated("<true/>", 10) + "</array>"), 11, 0, ""},
      {in_plist("<array>" + repeated("<true/>", 11) + "</array>"), 11, 0, "more values"},
      {in_plist("<dict><key>ab</key><string>cd</string></dict>"), 3, 8, ""},
      {in_plist("<dict><key>ab</key><string>cd</string></dict>"), 2, 8, "more values"},
      {in_plist("<dict><key>ab</key><string>cd</string></dict>"), 3, 7, "too long"},
      {binary_list(doubling), 10'000, 0, "more values"},
      {binary_list({"\xA3\1\1\1", "\x42xy"}), 4, 6, ""},
      {binary_list({"\xA3\1\1\1", "\x42xy"}), 3, 6, "more values"},
      {binary_list({"\xA3\1\1\1", "\x42xy"}), 4, 5, "too long"},
      {binary_list({"\xD1\1\1", "\x52xy"}), 3, 7, "too long"},
  };
  for (const auto& c : cases) {
    const std::string error = read_property_list(c.bytes, {c.values, c.text_bytes}).reason();
    EXPECT_TRUE(*c.error == '\0' ? error.empty() : error.find(c.error) != std::string::npos)
        << error << ": " << c.bytes;
  }
  PropertyListBudget whole;
  EXPECT_TRUE(whole.take_values(property_list_value_limit) && whole.take_bytes(property_list_byte_limit));
  EXPECT_FALSE(whole.take_values(1) || whole.take_bytes(1));
}

TEST(PropertyList, EndsSoonWhateverIsCutOff) {
  const std::string binary = write_binary_property_list(sample_list());
  const std::string xml = write_xml_property_list(sample_list());
  for (std::size_t length = 0; length < binary.size(); ++length) {
    EXPECT_NE(read_property_list(std::string_view(binary).substr(0, length)).reason(), "");
  }
  for (std::size_t length = 0; length + 1 < xml.size(); ++length) {
    EXPECT_NE(read_property_list(std::string_view(xml).substr(0, length)).reason(), "");
  }
}

TEST(PropertyListFile, NamesTheFileInItsErrors) {
  const test::TempTree tree;
  const std::string path = tree / "list.plist";
  EXPECT_THAT(read_property_list_file(path).reason(), testing::HasSubstr(path));
  EXPECT_EQ(write_property_list_file(path, sample_list(), u"4.\"<\t\x01").reason(), "");
  const Result<PropertyList> list = read_property_list_file(path);
  ASSERT_EQ(list.reason(), "");
  EXPECT_EQ(list->value, sample_list());
  EXPECT_EQ(list->appversion, u"4.\"<\t\x01");
  EXPECT_THAT(read_property_list_file(tree.path()).reason(), testing::HasSubstr("directory"));
  tree.make({"other"});
  EXPECT_THAT(read_property_list_file(tree / "other").reason(), testing::HasSubstr("other” is no property list"));
  EXPECT_THAT(tree.names(), testing::ElementsAre("list.plist", "other"));
}

}  // namespace
}  // namespace brindle
