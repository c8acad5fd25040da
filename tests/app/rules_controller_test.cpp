#include "app/rules_controller.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/scripted_ports.h"
#include "methods/method_table.h"
#include "methods/rule_file.h"

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Enabled = RulesController::Enabled;

Rule rule_of(RuleVariant variant, std::u16string_view mark) {
  Rule rule;
  rule.rule = rule_names(variant).rule;
  rule.type = rule_names(variant).type;
  rule.settings.prefixSuffixPrefix = rule.settings.insertDeleteInsert = std::u16string(mark);
  select_variant(rule.settings, variant);
  return rule;
}

struct Owner final : RulesOwner {
  std::optional<Rule> current;
  std::vector<std::u16string> loaded;  // the marks of the rules shown in the window
  std::string folder;

  std::optional<Rule> getCurrentRule() override { return current; }
  void setRule(const Rule& rule) override { loaded.push_back(rule.settings.prefixSuffixPrefix.value_or(u"-")); }
  std::string default_rules_folder() const override { return folder; }
  void rules_changed() override {}
};

class RulesControllerTest : public testing::Test {
 protected:
  RulesControllerTest() {
    owner.folder = home.path();
    for (const char16_t* mark : {u"a", u"b", u"c"}) rules.addRule(rule_of(RuleVariant::as_string, mark));
    rules.setOpen(true);
  }
  std::u16string marks() const {
    std::u16string text;
    for (const Rule& rule : rules.rules()) text += *rule.settings.prefixSuffixPrefix;
    return text;
  }

  test::TempHome home;
  test::ScriptedPorts ports;
  Owner owner;
  RulesController rules{ports.ports(), owner};
};

TEST_F(RulesControllerTest, MovesAndRemovesTheSelectedRule) {
  rules.moveUp();  // nothing is selected
  EXPECT_EQ(marks(), u"abc");
  rules.tableViewSelectionDidChange(0);
  EXPECT_EQ(rules.enabled(), (Enabled{true, true, true, true, true, true, true, false, true}));
  rules.moveDown();
  rules.moveDown();
  rules.moveDown();  // last already
  EXPECT_EQ(marks(), u"bca");
  EXPECT_EQ(rules.selectedRule(), 2U);
  EXPECT_TRUE(rules.enabled().moveUp && !rules.enabled().moveDown);
  rules.clearSelected();
  EXPECT_EQ(rules.selectedRule(), 1U) << "the last one follows";
  rules.moveUp();
  rules.clearSelected();
  EXPECT_EQ(marks(), u"b");
  EXPECT_FALSE(rules.enabled().moveUp || rules.enabled().moveDown);
  rules.clearAll();
  EXPECT_EQ(rules.selectedRule(), std::nullopt);
  EXPECT_EQ(rules.enabled(), Enabled{});
}

TEST_F(RulesControllerTest, ASelectedRuleIsShownWhileTheDrawerIsOpen) {
  rules.tableViewSelectionDidChange(1);
  rules.setOpen(false);
  rules.tableViewSelectionDidChange(2);
  rules.tableViewSelectionDidChange(7);
  EXPECT_THAT(owner.loaded, ElementsAre(u"b"));
  EXPECT_EQ(rules.selectedRule(), std::nullopt);
}

TEST_F(RulesControllerTest, UpdatesARuleByItsOwnMethodAlone) {
  rules.tableViewSelectionDidChange(1);
  rules.setObjectValue(u"0", "isActive", 1);
  EXPECT_EQ(rules.objectValue("isActive", 1), u"0");
  EXPECT_FALSE(rules.rules()[1].isActive);
  owner.current = rule_of(RuleVariant::insert, u"x");
  rules.updateRule();
  EXPECT_EQ(marks(), u"abc");
  owner.current = rule_of(RuleVariant::as_date, u"x");
  rules.updateRule();
  EXPECT_EQ(marks(), u"axc");
  EXPECT_EQ(rules.objectValue("type", 1), u"As Date");
}

TEST_F(RulesControllerTest, EveryControlIsOffWhileAChainRunsAndAsItWasAfterwards) {
  rules.tableViewSelectionDidChange(2);
  const Enabled before = rules.enabled();
  rules.setIsExecuting(true);
  rules.setIsExecuting(true);
  EXPECT_EQ(rules.enabled(), (Enabled{false, false, false, false, false, false, false, false, false}));
  rules.moveUp();
  rules.clearAll();
  rules.tableViewSelectionDidChange(0);
  EXPECT_EQ(marks(), u"abc");
  rules.setIsExecuting(false);
  EXPECT_EQ(rules.enabled(), before);
  rules.tabChanged(Method::from_list);
  EXPECT_FALSE(rules.enabled().addButton);
  rules.tabChanged(Method::sequence);
  EXPECT_TRUE(rules.enabled().addButton);
}

TEST_F(RulesControllerTest, SavesAChainAndOpensItAgain) {
  const std::string path = home / "chain.brrule";
  rules.saveRule();  // cancelled
  EXPECT_THAT(ports.alerts.take(), ElementsAre());
  ports.chooser.save_answers = {path, home / "none/chain.brrule"};
  rules.saveRule();
  rules.saveRule();
  ASSERT_EQ(ports.alerts.shown.size(), 2U);
  EXPECT_THAT(ports.alerts.shown[1].informative_text, HasSubstr("none/chain.brrule"));
  EXPECT_THAT(ports.alerts.take(), ElementsAre("RULESETTINGSFILESAVEDSUCCESS", "RULESETTINGSFILEUNABLETOSAVE"));
  EXPECT_EQ(ports.chooser.saved[0].extension, "brrule");
  EXPECT_EQ(ports.chooser.saved[0].folder, home.path());

  rules.clearAll();
  ports.chooser.open_answers = {{path}, {home / "missing.brrule"}};
  rules.openRule();
  EXPECT_EQ(marks(), u"abc");
  EXPECT_EQ(rules.selectedRule(), 0U);
  EXPECT_THAT(owner.loaded, ElementsAre(u"a"));
  rules.openRule();
  EXPECT_EQ(marks(), u"abc") << "a file that cannot be read changes nothing";
  EXPECT_THAT(ports.alerts.take(), ElementsAre(HasSubstr("missing.brrule")));
}

TEST_F(RulesControllerTest, RepairsTheMethodNamesOfOldFiles) {
  Rule old = rule_of(RuleVariant::as_string, u"o");
  old.rule = u"Rule - Rule - PrefixSuffix";
  ASSERT_EQ(write_rule_file(home / "old.brrule", std::vector<Rule>{old}).reason(), "");
  ASSERT_TRUE(rules.open_rule_file(home / "old.brrule"));
  EXPECT_EQ(rules.rules()[0].rule, u"PrefixSuffix");
}

}  // namespace
}  // namespace brindle
