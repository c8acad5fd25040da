#include "cli/method_rows.h"
#include "methods/date_time.h"
#include "methods/prefix_suffix.h"

namespace brindle {
namespace {

using S = RenameSettings;
using V = OptionValue;
using Kind = ValueKind;
using enum RuleVariant;
using option_group::what;

// Prefix, suffix, date and time.

template <auto is_there>
constexpr std::array<MethodOption, 5> dated_options() {
  return {{
      {"date",
       "created|modified|now",
       Kind::choice,
       to_translate("instead of TEXT, a date of the file, or the moment of the run"),
       [](S& s, const V& v) {
         s.isPrefixSuffixString = false, s.isPrefixSuffixDate = true, s.*is_there = true;
         s.prefixSuffixFileDateAttribute = (v.number + 1) % 3;
       },
       {},
       {},
       true,
       as_date},
      {"date-parts",
       "PATTERN",
       Kind::pattern,
       to_translate("how the date is written (ddMMyyyy)"),
       fill_date<prefix_suffix_parts>,
       {},
       "date"},
      {"time-parts",
       "PATTERN",
       Kind::pattern,
       to_translate("how the time is written (HHmmss); it follows the date behind a blank"),
       fill_time<prefix_suffix_parts>,
       {},
       "date"},
      {"text-before",
       "TEXT",
       Kind::text,
       to_translate("a text before the date"),
       [](S& s, const V& v) { s.prefixSuffixDatePrefix = v.text; },
       {},
       "date"},
      {"text-after",
       "TEXT",
       Kind::text,
       to_translate("a text behind the date"),
       [](S& s, const V& v) { s.prefixSuffixDateSuffix = v.text; },
       {},
       "date"},
  }};
}
constexpr auto prefix_operands =
    std::to_array<MethodOperand>({{"TEXT", Kind::text, to_translate("the text before the name"),
                                   [](S& s, const V& v) { s.prefixSuffixPrefix = v.text; }}});
constexpr auto prefix_options = dated_options<&S::isPrefixSuffixDatePrefix>();
constexpr auto prefix_examples = std::to_array<Example>({
    {"prefix 'Brest - '", "IMG_9.jpg", "Brest - IMG_9.jpg"},
    {"prefix --date modified --date-parts yyyy-MM-dd --text-after ' '", "", ""},
});
constexpr auto suffix_operands =
    std::to_array<MethodOperand>({{"TEXT", Kind::text, to_translate("the text behind the name"),
                                   [](S& s, const V& v) { s.prefixSuffixSuffix = v.text; }}});
constexpr auto suffix_options = dated_options<&S::isPrefixSuffixDateSuffix>();
constexpr auto suffix_examples = std::to_array<Example>({
    {"suffix ' (Brest)'", "IMG_9.jpg", "IMG_9 (Brest).jpg"},
    {"suffix --date now --time-parts HH.mm --text-before ' '", "", ""},
});
constexpr std::string_view pattern_note = to_translate(
    "A PATTERN holds up to three parts of a date (yyyy, yy, MM, MMM, MMMM, dd, EEEE) or a time (HH, hh, mm, ss, a) "
    "with "
    "texts of your own between them; letters that are to stand as they are go between two \"'\".");

constexpr auto date_own_options = std::to_array<MethodOption>({
    {"source", "created|modified|custom", Kind::choice,
     to_translate("which date (created); custom is the moment of the run"),
     [](S& s, const V& v) { s.dateTimeDateOptionIndex = v.number, s.hasDateTimeCustomDate = v.number == custom_date; },
     what},
    {"custom-date", "DATE", Kind::moment, to_translate("this date, 2026-11-21 or 2026-11-21T10:00"),
     [](S& s, const V& v) {
       s.dateTimeDateOptionIndex = custom_date, s.hasDateTimeCustomDate = true, s.dateTimeCustomDate = v.date;
     },
     what},
    {"date-parts", "PATTERN", Kind::pattern_or_none, to_translate("how the date is written (ddMMyyyy); none: no date"),
     [](S& s, const V& v) {
       s.hasDateFormat = !v.pieces[0].empty();
       if (!s.hasDateFormat) return;
       fill_date<date_time_parts>(s, v);
     }},
    {"time-parts", "PATTERN", Kind::pattern_or_none, to_translate("how the time is written (HHmmss); none: no time"),
     [](S& s, const V& v) {
       s.hasTimeFormat = !v.pieces[0].empty();
       if (!s.hasTimeFormat) return;
       fill_time<date_time_parts>(s, v);
     }},
    {"separator", "TEXT", Kind::text, to_translate("between date and time"),
     [](S& s, const V& v) { s.dateTimeSeparator = v.text; }},
    {"colon", "TEXT", Kind::text, to_translate("what takes the place of every \":\" of the date"),
     [](S& s, const V& v) { s.isDateTimeColonReplace = true, s.dateTimeColonReplace = v.text; }},
    {"text-before", "TEXT", Kind::text, to_translate("a text before the date"),
     [](S& s, const V& v) { s.dateTimePrefix = v.text; }},
    {"text-after", "TEXT", Kind::text, to_translate("a text behind the date"),
     [](S& s, const V& v) { s.dateTimeSuffix = v.text; }},
});
constexpr auto date_options = join(date_own_options, placement_options<date_placement>());
constexpr auto date_examples = std::to_array<Example>({
    {"date --source modified --date-parts yyyy-MM-dd --time-parts none --text-after ' '", "", ""},
    {"date --custom-date 2026-11-21 --date-parts yyyyMMdd --time-parts none --at-end --text-before _", "IMG_9.jpg",
     "IMG_9_20261121.jpg"},
});

// clang-format off
constexpr auto date_rows = std::to_array<MethodWord>({
    {"prefix", to_translate("put a text or a date before the name"), pattern_note, as_string, prefix_operands, prefix_options, 0, nullptr,
     prefix_examples},
    {"suffix", to_translate("put a text or a date behind the name"), pattern_note, as_string, suffix_operands, suffix_options, 0, nullptr,
     suffix_examples},
    {"date", to_translate("put a date and time anywhere into the name"), pattern_note, date_time, {}, date_options, 0, nullptr,
     date_examples},
});
// clang-format on

}  // namespace

std::span<const MethodWord> date_method_rows() {
  return date_rows;
}

}  // namespace brindle
