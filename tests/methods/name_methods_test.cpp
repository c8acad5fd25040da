// The methods that need nothing but the name, by their tables.

#include "methods/general.h"
#include "methods/insert_delete.h"
#include "methods/path_components.h"
#include "methods/sample_item.h"
#include "methods/sequence.h"
#include "text/number_text.h"

namespace brindle::test {
namespace {

TEST(General, DoesAsTheTableSays) {
  for_each_case("general", [](const Case& c) {
    RenameSettings settings;
    settings.generalOptionIndex = c.number("option", 0);
    settings.generalFileNameCase = settings.generalExtensionCase = c.number("case", 0);
    settings.generalSwapPosition = settings.generalRemoveAfterStringOccurrence =
        settings.generalRemoveFromStringOccurrence = typed(c.number("n", 1));
    for (const auto text :
         {&RenameSettings::generalChangeExtension, &RenameSettings::generalSwapSeperator,
          &RenameSettings::generalRemoveAfterString, &RenameSettings::generalRemoveFromString,
          &RenameSettings::generalConvertWindowsCompatibleString, &RenameSettings::generalFilenameMask}) {
      settings.*text = c["text"];
    }
    expect_case(c, GeneralParameters(settings));
  });
}

TEST(PathComponents, DoAsTheTableSays) {
  for_each_case("path_components", [](const Case& c) {
    RenameSettings settings;
    settings.pathComponentsLevelNo = c.number("level", 1);
    settings.pathComponentsSeparator = c["separator"];
    settings.pathComponentsPrefix = c["prefix"];
    settings.pathComponentsSuffix = c["suffix"];
    fill_place(c, settings, path_placement);
    expect_case(c, PathComponentsParameters(settings));
  });
}

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

RenameSettings settings_of(const Case& c) {
  RenameSettings settings;
  settings.isAlphaNumericIncrement = c.flag("increment", true);
  settings.isAlphaNumericDecrement = c.flag("decrement");
  settings.isAlphaNumericPrefix = c.flag("prefix");
  settings.isAlphaNumericSufix = c.flag("subffix");
  settings.isAlphaNumericSeperator = c.has("separator");
  settings.alphaNumericSeperator = c["separator"];
  settings.alphaNumericPaddingMask = c["mask"];
  settings.alphaNumericIncrementBy = settings.alphaNumericDecrementBy = typed(c.number("by", 1));
  return settings;
}

// The column "result" holds the names of as many items in a row, between "|"; "then" is the counter that is left.
SequenceCounter expect_run(const Case& c, const RenameStep& step, SequenceCounter counter) {
  StepRunner run;
  run.counter = std::move(counter);
  for (const std::string& expected : split(to_utf8(c["result"]) + '|', '|')) {
    FileSystemItem item = sample_item(c);
    EXPECT_EQ(run(step, item), !c.has("error"));
    EXPECT_EQ(to_utf8(item.newFilename()), expected);
  }
  EXPECT_NE(run.error.find(c["error"]), std::u16string::npos) << to_utf8(run.error);
  return run.counter;
}

TEST(Numeric, CountsAsTheTableSays) {
  for_each_case("numeric", [](const Case& c) {
    const SequenceCounter left = expect_run(c, NumericParameters(settings_of(c)), {c.number("counter", 1), {}});
    EXPECT_EQ(left.number, c.number("then", left.number));
  });
}

TEST(Alphabetic, CountsAsTheTableSays) {
  for_each_case("alphabetic", [](const Case& c) {
    const SequenceCounter left = expect_run(c, AlphabeticParameters(settings_of(c)), {0, c["counter"]});
    EXPECT_EQ(to_utf8(left.letters), to_utf8(c.has("then") ? c["then"] : left.letters));
  });
}

// The jump into range must end where stepping one by one ends.
TEST(LetterCounter, JumpsToWhereSteppingArrives) {
  for (const std::u16string start :
       {u"a", u"zz", u"AZ", u"m_", u"_m", u"aZa", u"a!~", u"~a", u"{z{", u"\x100z", u"z\x7Ez"}) {
    for (const std::int32_t step : {1, 2, 3, 5, 13, 25, 26}) {
      std::u16string up = start;
      std::u16string jumped_up = start;
      do up = nextAlphabeticNumber(up, step);
      while (!isAlphabeticNumericInRange(up));
      step_up_into_range(jumped_up, step);
      EXPECT_EQ(to_utf8(jumped_up), to_utf8(up)) << to_utf8(start) << " up by " << step;

      std::u16string down = start;
      std::u16string jumped_down = start;
      do {
        down = previousAlphabeticNumber(down, step);
        if (down.empty()) down = std::u16string(u"a\0", 2);
      } while (!isAlphabeticNumericInRange(down));
      step_down_into_range(jumped_down, step);
      EXPECT_EQ(to_utf8(jumped_down), to_utf8(down)) << to_utf8(start) << " down by " << step;
    }
  }
}

}  // namespace
}  // namespace brindle::test
