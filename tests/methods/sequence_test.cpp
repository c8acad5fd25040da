#include "methods/sequence.h"

#include "methods/sample_item.h"
#include "text/number_text.h"

namespace brindle::test {
namespace {

SequenceArguments arguments_of(const Case& c) {
  return {.increment = c.flag("increment", true),
          .decrement = c.flag("decrement"),
          .prefix = c.flag("prefix"),
          .subffix = c.flag("subffix"),
          .seperator = c.has("separator"),
          .seperatorString = c["separator"],
          .addingMask = c["mask"],
          .incrementBy = c.number("by", 1),
          .decrementBy = c.number("by", 1)};
}

// The column "result" holds the names of as many items in a row, between "|"; "then" is the counter that is left.
template <class Rename>
void expect_run(const Case& c, Rename rename) {
  WorkingName name;
  std::u16string error;
  for (const std::string& expected : split(to_utf8(c["result"]) + '|', '|')) {
    FileSystemItem item = sample_item(c);
    EXPECT_EQ(rename(item, name, error), !c.has("error"));
    EXPECT_EQ(to_utf8(item.newFilename()), expected);
  }
  EXPECT_NE(error.find(c["error"]), std::u16string::npos) << to_utf8(error);
}

TEST(Numeric, CountsAsTheTableSays) {
  for_each_case("numeric", [](const Case& c) {
    const NumericParameters parameters(arguments_of(c));
    std::int32_t counter = c.number("counter", 1);
    expect_run(c, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
      return renameByNumeric(item, parameters, counter, name, error);
    });
    EXPECT_EQ(counter, c.number("then", counter));
  });
}

TEST(Alphabetic, CountsAsTheTableSays) {
  for_each_case("alphabetic", [](const Case& c) {
    const AlphabeticParameters parameters(arguments_of(c));
    std::u16string counter = c["counter"];
    expect_run(c, [&](FileSystemItem& item, WorkingName& name, std::u16string& error) {
      return renameByAlphabetic(item, parameters, counter, name, error);
    });
    EXPECT_EQ(to_utf8(counter), to_utf8(c.has("then") ? c["then"] : counter));
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
