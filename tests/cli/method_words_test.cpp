#include "cli/method_words.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "cli/method_rows.h"
#include "cli/rename_request.h"
#include "cli/words.h"
#include "platform/file_name.h"
#include "support/case_file.h"

namespace brindle {
namespace {

constexpr Date noon = Date{std::chrono::hours(12)};

std::string new_name(RenamePlan plan, const std::string& path) {
  FileSystemItem item;
  const std::size_t slash = path.rfind('/');
  item.set_path(slash == std::string::npos ? "/" : "/" + path.substr(0, slash), path.substr(slash + 1));
  std::u16string error;
  EXPECT_TRUE(plan.run(item, error)) << to_utf8(error);
  return to_utf8(*item.objectForKey("newFilename"));
}

RenameRequest request_of(const std::string& words) {
  return std::get<RenameRequest>(make_request(parse_line("preview . " + words), noon));
}

// As a method of its own, and as a chain of one rule: a chain may not lose any of it.
void expect_name(const std::string& words, const std::string& path, std::string_view expected) {
  RenameSettings settings = request_of(words).settings;
  EXPECT_EQ(new_name(RenamePlan(settings, noon), path), expected) << words;
  const NewRule rule = getRule(settings);
  ASSERT_TRUE(std::holds_alternative<Rule>(rule)) << words;
  EXPECT_EQ(new_name(RenamePlan(std::vector{std::get<Rule>(rule)}, noon), path), expected) << words << ", as a chain";
}

TEST(Methods, KeepTheirExamplesPromise) {
  for (const MethodWord& method : method_words()) {
    for (const Example& example : method.examples) {
      const std::string words(example.words);
      EXPECT_EQ(parse_line("preview . " + words).methods.front().method, &method) << words;
      if (!example.before.empty()) expect_name(words, std::string(example.before), example.after);
    }
  }
}

// Words, a name and what it becomes, and everything in the settings that is not at its default.
TEST(Methods, FillTheSettings) {
  RenameSettings defaults;
  loadEmptyProfile(defaults, noon);
  for (const CaseColumns& c : read_cases("cli_methods.tsv", 4)) {
    const RenameSettings settings = request_of(c[0]).settings;
    EXPECT_THAT(differing_keys(settings, with(defaults, c[3], field_of_known_token)), testing::IsEmpty()) << c[0];
    if (!c[1].empty()) expect_name(c[0], c[1], c[2]);
  }
}

TEST(Methods, RunAsAChainInOrder) {
  const RenameRequest request = request_of("insert a then replace a bb then case --upper --set insertDeleteInsert=aX");
  EXPECT_EQ(request.rules.size(), 3);
  EXPECT_EQ(new_name(request.plan(), "n.txt"), "BBXN.txt");
}

TEST(Methods, AreRefusedWithoutTheirText) {
  for (const std::string words : {"insert ''", "replace '' x", "mask ''", "insert a then remove ''"}) {
    const auto result = make_request(parse_line("preview . " + words), noon);
    ASSERT_TRUE(std::holds_alternative<Refusal>(result)) << words;
    EXPECT_FALSE(describe(std::get<Refusal>(result)).empty());
  }
}

TEST(Request, NeedsToKnowHow) {
  for (const std::string words :
       {"", "--set isFolders=1", "--set isFiles", "--set nokey=1", "--set selectedTab=five"}) {
    EXPECT_THROW(make_request(parse_line("preview . " + words), noon), UsageError) << words;
  }
  const RenameRequest request = request_of("--folders --no-subfolders --set selectedTab=5 --set generalOptionIndex=4");
  EXPECT_EQ(new_name(request.plan(), "ab.c"), "ba.c");
  EXPECT_TRUE(request.settings.isFolders && !request.settings.isFiles && !request.settings.isIncludeSubFolders);
}

}  // namespace
}  // namespace brindle
