#include "settings/run_choices.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(RunChoices, AreKeptOnlyWhereTheyAreNotTheUsualOnes) {
  SettingsRecord record;
  put_choices(record, {});
  EXPECT_EQ(record, SettingsRecord());
  const RunChoices chosen{OnProblem::none, u"_{}", true};
  put_choices(record, chosen);
  EXPECT_EQ(choices_in(record), chosen);
}

TEST(RunChoices, AreTheUsualOnesWhereARecordMakesNoSense) {
  SettingsRecord record;
  record.set(u"onProblem", u"replace");
  record.set(u"numberPattern", u"no place");
  record.set(u"permute", u"maybe");
  EXPECT_EQ(choices_in(record), RunChoices());
}

}  // namespace
}  // namespace brindle
