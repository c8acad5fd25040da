#include "methods/insert_delete.h"

#include "methods/sample_item.h"

namespace brindle::test {
namespace {

TEST(Insert, PutsTheTextInItsPlace) {
  for_each_case("insert", [](const Case& c) {
    const InsertParameters parameters({.insertText = c["text"],
                                       .insertOptionIndex = c.number("option", 0),
                                       .atCharacterPositions = c.number("position", 1),
                                       .atPostionDirection = c.number("direction", 0),
                                       .atBeforeText = c["before"],
                                       .atBeforeOccurrence = c.number("occurrence", 1),
                                       .atAfterText = c["after"],
                                       .atAfterOccurrence = c.number("occurrence", 1)});
    expect_case(c, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
      return renameByInsert(item, parameters, name, error);
    });
  });
}

TEST(Delete, CutsTheRun) {
  for_each_case("delete", [](const Case& c) {
    const DeleteParameters parameters{.deleteFromBackward = c.flag("backward"),
                                      .fromCharacterPosition = c.number("position", 1),
                                      .numberOfCharacters = c.number("count", 1)};
    expect_case(c, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
      return renameByDelete(item, parameters, name, error);
    });
  });
}

// The text an earlier failure left behind decides the result, even of a call that succeeds.
TEST(RenameOperation, IsTrueOnlyWhileTheErrorIsEmpty) {
  FileSystemItem item = sample_item(u"a.txt");
  WorkingName name;
  std::u16string error = u"earlier";
  EXPECT_FALSE(renameByInsert(item, InsertParameters({.insertText = u"x"}), name, error));
  EXPECT_EQ(item.newFilename(), u"xa.txt");
  EXPECT_EQ(error, u"earlier");
}

TEST(RenameOperation, ReportsWhatIsThrownAndKeepsTheField) {
  FileSystemItem item = sample_item(u"a.txt");
  item.setNewFilename(u"kept.txt");
  WorkingName name;
  std::u16string error;
  const auto fail = [](WorkingName& working) -> NameOutcome {
    working.result = u"half";
    throw std::runtime_error("no \xC3\xA9");
  };
  set_failure_format(u"<%@>");
  EXPECT_FALSE(rename_operation(item, name, error, fail));
  EXPECT_EQ(error, u"<no é>");
  EXPECT_EQ(item.newFilename(), u"kept.txt");
  set_failure_format(u"Unable to generate the new file name: %@");
}

}  // namespace
}  // namespace brindle::test
