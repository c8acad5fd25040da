#include "methods/insert_delete.h"

#include "methods/sample_item.h"

namespace brindle::test {
namespace {

TEST(Insert, PutsTheTextInItsPlace) {
  for_each_case("insert", [](const Case& c) {
    RenameSettings settings;
    settings.insertDeleteInsert = c["text"];
    fill_place(c, settings, insert_placement);
    expect_case(c, InsertParameters(settings));
  });
}

TEST(Delete, CutsTheRun) {
  for_each_case("delete", [](const Case& c) {
    RenameSettings settings;
    settings.isInsertDeleteDeleteFromBackWard = c.flag("backward");
    settings.insertDeleteFromCharacterPosition = typed(c.number("position", 1));
    settings.insertDeleteNumberOfCharacters = typed(c.number("count", 1));
    expect_case(c, DeleteParameters(settings));
  });
}

// The text an earlier failure left behind decides the result, even of a call that succeeds.
TEST(RenameOperation, IsTrueOnlyWhileTheErrorIsEmpty) {
  RenameSettings settings;
  settings.insertDeleteInsert = u"x";
  FileSystemItem item = sample_item(u"a.txt");
  StepRunner run;
  run.error = u"earlier";
  EXPECT_FALSE(run(InsertParameters(settings), item));
  EXPECT_EQ(item.newFilename(), u"xa.txt");
  EXPECT_EQ(run.error, u"earlier");
}

struct FailingStep final : RenameStep {
  NameOutcome make_name(StepRun& run) const override {
    run.name.result = u"half";
    throw std::runtime_error("no \xC3\xA9");
  }
};

TEST(RenameOperation, ReportsWhatIsThrownAndKeepsTheField) {
  FileSystemItem item = sample_item(u"a.txt");
  item.setNewFilename(u"kept.txt");
  StepRunner run;
  set_failure_format(u"<%@>");
  EXPECT_FALSE(run(FailingStep(), item));
  EXPECT_EQ(run.error, u"<no é>");
  EXPECT_EQ(item.newFilename(), u"kept.txt");
  set_failure_format(u"Unable to generate the new file name: %@");
}

}  // namespace
}  // namespace brindle::test
