// What fields accept and show.

#include <gtest/gtest.h>

#include "settings/extension_list.h"
#include "settings/field_filter.h"

namespace brindle {
namespace {

TEST(TypedText, IsLetIntoShortFieldsOrNot) {
  const struct {
    std::u16string text;
    bool accepted, beep;
  } cases[] = {{u"", true, true},     {u"0", true, false},  {u"300", true, false},   {u"301", false, true},
               {u"007", false, true}, {u"+7", false, true}, {u"-7", false, true},    {u"7 ", false, true},
               {u" 7", false, true},  {u"x", false, true},  {u"1000", false, false}, {u"\u0663", false, true}};
  CustomTextFieldFormatter filter;
  for (const auto& each : cases) {
    const auto answer = filter.check(each.text);
    EXPECT_EQ(answer.accepted, each.accepted);
    EXPECT_EQ(answer.beep, each.beep);
  }
}

TEST(TypedText, LeavesANumberInNumericFields) {
  EXPECT_EQ(numeric_field_text(u" 012x", 5), u"12");
  EXPECT_EQ(numeric_field_text(u"-3", 5), u"-3");
  for (const char16_t* text : {u"", u"0", u"x1"}) EXPECT_EQ(numeric_field_text(text, 5), u"5");
}

TEST(TypedText, BecomesAListOfExtensions) {
  EXPECT_EQ(parsed_extensions(u" jpg;.Tif ;; .JPG;.;\u00E4x"), (TextList{u".JPG", u".TIF", u".\u00C4X"}));
  EXPECT_EQ(extension_entry(u""), u"");
}

}  // namespace
}  // namespace brindle
