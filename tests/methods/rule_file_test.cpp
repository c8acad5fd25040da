#include "methods/rule_file.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "platform/app_info.h"
#include "plist/property_list.h"
#include "settings/profile_file.h"
#include "support/case_file.h"
#include "support/temp_tree.h"

namespace brindle {
namespace {

using testing::HasSubstr;

std::string content_of(const std::string& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

class RuleFileTest : public testing::Test {
 protected:
  void write(const std::string& content) const { std::ofstream(path) << "<plist>" << content << "</plist>"; }

  std::string read(MethodNames names = MethodNames::repaired) {
    Result<std::vector<Rule>> read = read_rule_file(path, names);
    if (read.ok()) rules = *read;
    return read.reason();
  }

  test::TempTree tree;
  std::string path = tree / "Chain.brrule";
  std::vector<Rule> rules;
};

std::vector<Rule> chain_of_all() {
  std::vector<Rule> chain;
  for (const CaseColumns& c : read_cases("rules.tsv", 4)) {
    RenameSettings settings = with(all_changed(), c[1]);
    const NewRule result = getRule(settings);
    if (const auto* rule = std::get_if<Rule>(&result)) chain.push_back(*rule);
  }
  EXPECT_GT(chain.size(), 14U);
  chain.front().isActive = false;
  chain.back().other_entries.append(u"note\x02", PropertyValue::Array{1, true});
  return chain;
}

TEST_F(RuleFileTest, KeepsAWholeChain) {
  const std::vector<Rule> chain = chain_of_all();
  ASSERT_EQ(write_rule_file(path, chain).reason(), "");
  const std::string first = content_of(path);
  EXPECT_EQ(appVersionInPlist(path), std::string(appVersion()));
  ASSERT_EQ(read(), "");
  EXPECT_EQ(rules, chain);
  ASSERT_EQ(write_rule_file(path, rules).reason(), "");
  EXPECT_EQ(content_of(path), first);
  EXPECT_THAT(tree.names(), testing::ElementsAre("Chain.brrule"));
}

TEST_F(RuleFileTest, RepairsOldNamesOnlyWhereAsked) {
  write(
      "<array><dict><key>rule</key><string>Rule - AlphaNumRule - "
      "eric</string><key>type</key><string>Alphabetic</string>"
      "<key>sequence</key><string>ab</string><key>alphaNumericAlphabeticStartWith</key><string>q</string></dict>"
      "<dict><key>rule</key><string>rule - Photo</string><key>MetaDataList</key><data>AAEC</data></dict>"
      "<dict><key>rule</key><integer>1</integer></dict></array>");
  ASSERT_EQ(read(MethodNames::as_read), "");
  ASSERT_EQ(rules.size(), 3U);
  EXPECT_EQ(variant_of(rules[0]), std::nullopt);
  // Saved under its old name, a rule has lost nothing.
  ASSERT_EQ(write_rule_file(path, rules).reason(), "");
  const std::string saved = content_of(path);
  EXPECT_THAT(saved, testing::AllOf(HasSubstr("Rule - AlphaNumRule - eric"), HasSubstr("AAEC")));
  ASSERT_EQ(read(), "");
  EXPECT_EQ(variant_of(rules[0]), RuleVariant::alphabetic);
  EXPECT_EQ(rules[0].settings.alphaNumericAlphabeticStartWith, u"q");
  EXPECT_EQ(rules[0].letter_sequence, u"ab");
  EXPECT_EQ(rules[1].rule, u"rule - Photo");
}

TEST_F(RuleFileTest, SaysWhatItExpected) {
  const std::string many = "<array>" + [] {
    std::string all;
    for (int i = 0; i < 10'001; ++i) all += "<dict/>";
    return all;
  }() + "</array>";
  const std::pair<std::string, const char*> cases[] = {
      {"<dict/>", "it should hold an array of rules, and holds a dictionary"},
      {"<array><dict/><string>x</string></array>", "its rule 2 should be a dictionary, and is a text"},
      {many, "more than 10000 rules"},
      {"<array><dict>", "line 1: "},
  };
  for (const auto& [content, error] : cases) {
    write(content);
    EXPECT_THAT(read(), testing::AllOf(HasSubstr(error), HasSubstr(path)));
  }
  rules.resize(1);
  write("<array/>");
  EXPECT_EQ(read(), "");
  EXPECT_TRUE(rules.empty());
}

TEST_F(RuleFileTest, LeavesTheOldFileWhenItCannotWrite) {
  EXPECT_THAT(write_rule_file(tree / "no folder/a.brrule", {}).reason(), HasSubstr("no folder/a.brrule"));
  EXPECT_TRUE(tree.names().empty());
}

TEST_F(RuleFileTest, ProfilesKeepARecord) {
  RenameSettings settings = all_changed();
  resetPhotoMask(settings);
  resetID3Mask(settings);
  const std::string profile = tree / "My.brprofile";
  ASSERT_EQ(write_profile_file(profile, getCurrentSettings(settings)).reason(), "");
  const std::string first = content_of(profile);
  const Result<SettingsRecord> read = read_profile_file(profile);
  ASSERT_EQ(read.reason(), "");
  const SettingsRecord& record = *read;
  EXPECT_EQ(record.begin()->key, u"appVersion");
  for (const char16_t* list : {u"photoMetaDataList", u"id3RenamingTagsList", u"photoExtensions", u"id3Extensions"}) {
    EXPECT_NE(record.find(list)->get_if<PropertyValue::Data>(), nullptr);
  }
  RenameSettings loaded;
  setSettings(loaded, record);
  EXPECT_THAT(differing_keys(loaded, settings), testing::ElementsAre("dateTimeCustomDate"));
  ASSERT_EQ(write_profile_file(profile, record).reason(), "");
  EXPECT_EQ(content_of(profile), first);

  ASSERT_EQ(write_rule_file(path, {}).reason(), "");
  EXPECT_THAT(read_profile_file(path).reason(),
              HasSubstr("is no profile: it should hold a dictionary of settings, and holds an array"));
  EXPECT_EQ(record.size(), setting_count);
}

}  // namespace
}  // namespace brindle
