#include "cli/method_table.h"

#include <algorithm>
#include <cstddef>

#include "cli/mask_text.h"
#include "platform/file_name.h"
#include "settings/setting_text.h"

namespace brindle {
namespace {

using S = RenameSettings;
using V = OptionValue;
using Kind = ValueKind;
using enum RuleVariant;

template <std::size_t A, std::size_t B>
constexpr std::array<MethodOption, A + B> join(const std::array<MethodOption, A>& a,
                                               const std::array<MethodOption, B>& b) {
  std::array<MethodOption, A + B> both{};
  std::ranges::copy(a, both.begin());
  std::ranges::copy(b, both.begin() + A);
  return both;
}

// Options that share a letter exclude each other.
constexpr std::string_view place = "p";
constexpr std::string_view what = "w";
constexpr char one_of_what = 'w';

// Where a text goes, for the three methods that place one, by the members that say so.
template <auto index, auto position, auto direction, auto before, auto before_count, auto after, auto after_count>
constexpr std::array<MethodOption, 7> placement_options() {
  return {{
      {"at-start", "", Kind::none, "before the name (the default)", [](S& s, const V&) { s.*index = 0; }, place},
      {"at-end", "", Kind::none, "behind the name, before its extension", [](S& s, const V&) { s.*index = 1; }, place},
      {"at", "N", Kind::number, "so that it begins at character N, from 1",
       [](S& s, const V& v) { s.*index = 2, s.*position = v.text; }, place},
      {"from-end",
       "",
       Kind::none,
       "count N from the end: 1 is behind the last character",
       [](S& s, const V&) { s.*direction = 1; },
       {},
       "at"},
      {"before", "TEXT", Kind::text, "before TEXT, where the name holds it",
       [](S& s, const V& v) { s.*index = 3, s.*before = v.text; }, place},
      {"after", "TEXT", Kind::text, "behind TEXT, where the name holds it",
       [](S& s, const V& v) { s.*index = 4, s.*after = v.text; }, place},
      {"occurrence",
       "N",
       Kind::number,
       "which TEXT, when the name holds several (1)",
       [](S& s, const V& v) { s.*before_count = v.text, s.*after_count = v.text; },
       {},
       "before|after"},
  }};
}

// Insert and delete.

constexpr auto insert_operands = std::to_array<MethodOperand>(
    {{"TEXT", Kind::text, "the text to insert", [](S& s, const V& v) { s.insertDeleteInsert = v.text; }}});
constexpr auto insert_options =
    placement_options<&S::insertDeleteInsertOptionIndex, &S::insertDeleteAtCharacterPositions,
                      &S::insertDeleteInsertAtPostionDirection, &S::insertDeleteInsertAtBeforeText,
                      &S::insertDeleteInsertAtBeforeOccurrence, &S::insertDeleteInsertAtAfterText,
                      &S::insertDeleteInsertAtAfterOccurrence>();
constexpr auto insert_examples = std::to_array<Example>({
    {"insert 'Brest - '", "IMG_9.jpg", "Brest - IMG_9.jpg"},
    {"insert _small --at-end", "IMG_9.jpg", "IMG_9_small.jpg"},
    {"insert 2026- --after _", "IMG_9.jpg", "IMG_2026-9.jpg"},
});

constexpr auto delete_operands =
    std::to_array<MethodOperand>({{"COUNT", Kind::number, "how many characters",
                                   [](S& s, const V& v) { s.insertDeleteNumberOfCharacters = v.text; }}});
constexpr auto delete_options = std::to_array<MethodOption>({
    {"at", "N", Kind::number, "the first character to delete, from 1 (1)",
     [](S& s, const V& v) { s.insertDeleteFromCharacterPosition = v.text; }},
    {"from-end", "", Kind::none, "count from the end: 1 is the last character, and the deleted ones stand before it",
     [](S& s, const V&) { s.isInsertDeleteDeleteFromBackWard = true; }},
});
constexpr auto delete_examples = std::to_array<Example>({
    {"delete 4", "IMG_9.jpg", "9.jpg"},
    {"delete 7 --from-end", "IMG_9 (copy).jpg", "IMG_9.jpg"},
});

// Replace and remove. "Remove characters" is a variant of its own only when it takes all of them, as it always does.

constexpr auto search_options = std::to_array<MethodOption>({
    {"all", "", Kind::none, "every one; else the first alone",
     [](S& s, const V&) { s.isReplaceRemoveAllOccurrence = true; }, "aon"},
    {"occurrence", "N", Kind::number, "begin with the N-th (1)",
     [](S& s, const V& v) { s.replaceRemoveStartOnOccurrence = v.text; }, "oc"},
    {"count", "N", Kind::number, "how many, from there on (1; -1: all)",
     [](S& s, const V& v) { s.replaceRemoveOccuranceCount = v.text; }, "nd"},
    {"case-sensitive", "", Kind::none, "upper and lower case differ",
     [](S& s, const V&) { s.isReplaceRemoveCaseSensitive = true; }},
    {"from", "N", Kind::number, "leave what stands before character N alone (1)",
     [](S& s, const V& v) { s.replaceRemoveStartFromCharacter = v.text; }},
    {"backward", "", Kind::none, "read the name from its end, letter by letter: \"ab\" finds \"ba\"",
     [](S& s, const V&) { s.replaceRemovePositionDirection = 1; }},
});
constexpr auto replace_operands = std::to_array<MethodOperand>({
    {"THIS", Kind::text, "the text to look for", [](S& s, const V& v) { s.replaceRemoveThis = v.text; }},
    {"WITH", Kind::text, "what takes its place", [](S& s, const V& v) { s.replaceRemoveWith = v.text; }},
});
constexpr auto replace_examples = std::to_array<Example>({
    {"replace _ ' ' --all", "a_long_name.txt", "a long name.txt"},
    {"replace img Photo", "IMG_9.jpg", "Photo_9.jpg"},
    {"replace - + --occurrence 2", "2026-11-21.txt", "2026-11+21.txt"},
});

constexpr auto remove_operands = std::to_array<MethodOperand>(
    {{"TEXT", Kind::text, "the text to look for", [](S& s, const V& v) { s.replaceRemoveThis = v.text; }}});
constexpr void remove_by_type(S& s, std::int32_t type) {
  s.isReplaceRemoveRemoveCharacters = true;
  s.isReplaceRemoveAllOccurrence = true;
  s.replaceRemoveRemoveType = type;
}
constexpr auto remove_what = std::to_array<MethodOption>({
    {"characters",
     "",
     Kind::none,
     "TEXT is a set of characters: remove each of them, wherever it stands",
     [](S& s, const V&) { remove_by_type(s, 0); },
     "wacd",
     {},
     false,
     remove_characters},
    {"between",
     "",
     Kind::none,
     "remove what stands between two TEXTs; when there is no second, to the end",
     [](S& s, const V&) { remove_by_type(s, 1); },
     "wa",
     {},
     false,
     remove_characters},
    {"with-ends", "", Kind::none, "the two TEXTs as well", [](S& s, const V&) { remove_by_type(s, 2); }, {}, "between"},
});
constexpr auto remove_options = join(remove_what, search_options);
constexpr auto remove_examples = std::to_array<Example>({
    {"remove ' (copy)'", "IMG_9 (copy).jpg", "IMG_9.jpg"},
    {"remove --characters '()[]'", "IMG_9 (copy).jpg", "IMG_9 copy.jpg"},
    {"remove --between - --with-ends", "IMG-2026-9.jpg", "IMG9.jpg"},
});

// Number and letter sequences.

template <auto start>
constexpr std::array<MethodOption, 8> sequence_options(MethodOption first) {
  first.fill = [](S& s, const V& v) { s.*start = v.text; };
  return {{
      first,
      {"step", "N", Kind::number, "from one item to the next (1)",
       [](S& s, const V& v) { s.alphaNumericIncrementBy = s.alphaNumericDecrementBy = v.text; }},
      {"down", "", Kind::none, "count down",
       [](S& s, const V&) { s.isAlphaNumericIncrement = false, s.isAlphaNumericDecrement = true; }},
      {"mask", "MASK", Kind::text, "its length is the width and its first characters fill up: 000 makes 7 into 007",
       [](S& s, const V& v) { s.alphaNumericPaddingMask = v.text; }},
      {"prefix", "", Kind::none, "before the name; without --prefix and --suffix the name is replaced",
       [](S& s, const V&) { s.isAlphaNumericPrefix = true; }},
      {"suffix", "", Kind::none, "behind the name, before its extension",
       [](S& s, const V&) { s.isAlphaNumericSufix = true; }},
      {"separator",
       "TEXT",
       Kind::text,
       "between the two",
       [](S& s, const V& v) { s.isAlphaNumericSeperator = true, s.alphaNumericSeperator = v.text; },
       {},
       "prefix|suffix"},
      {"restart", "", Kind::none, "start again in each folder; the items are sorted by folder and name for it",
       [](S& s, const V&) { s.isAlphaNumericResetSequenceOnEachFolder = true; }},
  }};
}
constexpr auto number_options =
    sequence_options<&S::alphaNumericNumericStartWith>({"start", "N", Kind::number, "the first number (0)"});
constexpr auto letter_options = sequence_options<&S::alphaNumericAlphabeticStartWith>(
    {"start", "LETTERS", Kind::letters, "the first letters, a to z (a)"});
constexpr auto number_examples = std::to_array<Example>({
    {"number --start 1 --mask 000", "IMG_9.jpg", "001.jpg"},
    {"number --start 10 --suffix --separator -", "IMG_9.jpg", "IMG_9-10.jpg"},
});
constexpr auto letter_examples = std::to_array<Example>({
    {"letter --prefix --separator ' - '", "IMG_9.jpg", "a - IMG_9.jpg"},
    {"letter --start az", "IMG_9.jpg", "az.jpg"},
});
constexpr std::string_view order_note =
    "The items are counted in the order of the list: as you name them, and within a folder as the disk lists it. Give "
    "--sort name or --sort folder before the method to count them by name.";

// Prefix, suffix, date and time.

// Which members hold the five pieces of a pattern.
template <auto part1, auto separator1, auto part2, auto separator2, auto part3>
constexpr FillSettings fill_pattern = [](S& s, const V& v) {
  s.*part1 = v.pieces[0], s.*separator1 = v.pieces[1], s.*part2 = v.pieces[2];
  s.*separator2 = v.pieces[3], s.*part3 = v.pieces[4];
};

template <auto is_there>
constexpr std::array<MethodOption, 5> dated_options() {
  return {{
      {"date",
       "created|modified|now",
       Kind::choice,
       "instead of TEXT, a date of the file, or the moment of the run",
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
       "how the date is written (ddMMyyyy)",
       fill_pattern<&S::prefixSuffixDatePart1, &S::prefixSuffixDateSeperator1, &S::prefixSuffixDatePart2,
                    &S::prefixSuffixDateSeperator2, &S::prefixSuffixDatePart3>,
       {},
       "date"},
      {"time-parts",
       "PATTERN",
       Kind::pattern,
       "how the time is written (HHmmss); it follows the date behind a blank",
       fill_pattern<&S::prefixSuffixTimePart1, &S::prefixSuffixTimeSeperator1, &S::prefixSuffixTimePart2,
                    &S::prefixSuffixTimeSeperator2, &S::prefixSuffixTimePart3>,
       {},
       "date"},
      {"text-before",
       "TEXT",
       Kind::text,
       "a text before the date",
       [](S& s, const V& v) { s.prefixSuffixDatePrefix = v.text; },
       {},
       "date"},
      {"text-after",
       "TEXT",
       Kind::text,
       "a text behind the date",
       [](S& s, const V& v) { s.prefixSuffixDateSuffix = v.text; },
       {},
       "date"},
  }};
}
constexpr auto prefix_operands = std::to_array<MethodOperand>(
    {{"TEXT", Kind::text, "the text before the name", [](S& s, const V& v) { s.prefixSuffixPrefix = v.text; }}});
constexpr auto prefix_options = dated_options<&S::isPrefixSuffixDatePrefix>();
constexpr auto prefix_examples = std::to_array<Example>({
    {"prefix 'Brest - '", "IMG_9.jpg", "Brest - IMG_9.jpg"},
    {"prefix --date modified --date-parts yyyy-MM-dd --text-after ' '", "", ""},
});
constexpr auto suffix_operands = std::to_array<MethodOperand>(
    {{"TEXT", Kind::text, "the text behind the name", [](S& s, const V& v) { s.prefixSuffixSuffix = v.text; }}});
constexpr auto suffix_options = dated_options<&S::isPrefixSuffixDateSuffix>();
constexpr auto suffix_examples = std::to_array<Example>({
    {"suffix ' (Brest)'", "IMG_9.jpg", "IMG_9 (Brest).jpg"},
    {"suffix --date now --time-parts HH.mm --text-before ' '", "", ""},
});
constexpr std::string_view pattern_note =
    "A PATTERN holds up to three parts of a date (yyyy, yy, MM, MMM, MMMM, dd, EEEE) or a time (HH, hh, mm, ss, a) "
    "with "
    "texts of your own between them; letters that are to stand as they are go between two \"'\".";

constexpr auto date_own_options = std::to_array<MethodOption>({
    {"source", "created|modified|custom", Kind::choice, "which date (created); custom is the moment of the run",
     [](S& s, const V& v) { s.dateTimeDateOptionIndex = v.number, s.hasDateTimeCustomDate = v.number == 2; }, what},
    {"custom-date", "DATE", Kind::moment, "this date, 2026-11-21 or 2026-11-21T10:00",
     [](S& s, const V& v) {
       s.dateTimeDateOptionIndex = 2, s.hasDateTimeCustomDate = true, s.dateTimeCustomDate = v.date;
     },
     what},
    {"date-parts", "PATTERN", Kind::pattern_or_none, "how the date is written (ddMMyyyy); none: no date",
     [](S& s, const V& v) {
       s.hasDateFormat = !v.pieces[0].empty();
       if (!s.hasDateFormat) return;
       fill_pattern<&S::dateTimeFormatDatePart1, &S::dateTimeFormatDateSeperator1, &S::dateTimeFormatDatePart2,
                    &S::dateTimeFormatDateSeperator2, &S::dateTimeFormatDatePart3>(s, v);
     }},
    {"time-parts", "PATTERN", Kind::pattern_or_none, "how the time is written (HHmmss); none: no time",
     [](S& s, const V& v) {
       s.hasTimeFormat = !v.pieces[0].empty();
       if (!s.hasTimeFormat) return;
       fill_pattern<&S::dateTimeFormatTimePart1, &S::dateTimeFormatTimeSeperator1, &S::dateTimeFormatTimePart2,
                    &S::dateTimeFormatTimeSeperator2, &S::dateTimeFormatTimePart3>(s, v);
     }},
    {"separator", "TEXT", Kind::text, "between date and time", [](S& s, const V& v) { s.dateTimeSeparator = v.text; }},
    {"colon", "TEXT", Kind::text, "what takes the place of every \":\" of the date",
     [](S& s, const V& v) { s.isDateTimeColonReplace = true, s.dateTimeColonReplace = v.text; }},
    {"text-before", "TEXT", Kind::text, "a text before the date", [](S& s, const V& v) { s.dateTimePrefix = v.text; }},
    {"text-after", "TEXT", Kind::text, "a text behind the date", [](S& s, const V& v) { s.dateTimeSuffix = v.text; }},
});
constexpr auto date_options =
    join(date_own_options,
         placement_options<&S::dateTimeOptionsIndex, &S::dateTimeAtPositionNo, &S::dateTimeAtPositionDirection,
                           &S::dateTimeAtBeforeText, &S::dateTimeAtBeforeTextOccurrence, &S::dateTimeAtAfterText,
                           &S::dateTimeAtAfterTextOccurrence>());
constexpr auto date_examples = std::to_array<Example>({
    {"date --source modified --date-parts yyyy-MM-dd --time-parts none --text-after ' '", "", ""},
    {"date --custom-date 2026-11-21 --date-parts yyyyMMdd --time-parts none --at-end --text-before _", "IMG_9.jpg",
     "IMG_9_20261121.jpg"},
});

// General transformations.

template <std::int32_t value>
constexpr FillSettings name_case = [](S& s, const V&) { s.generalOptionIndex = 0, s.generalFileNameCase = value; };
template <std::int32_t value>
constexpr FillSettings extension_case =
    [](S& s, const V&) { s.generalOptionIndex = 1, s.generalExtensionCase = value; };

constexpr auto case_options = std::to_array<MethodOption>({
    {"upper", "", Kind::none, "UPPER CASE", name_case<1>, what},
    {"lower", "", Kind::none, "lower case", name_case<2>, what},
    {"proper", "", Kind::none, "Every Word With A Capital", name_case<3>, what},
});
constexpr auto case_examples = std::to_array<Example>({
    {"case --lower", "IMG_9.JPG", "img_9.JPG"},
    {"case --proper", "my long NAME.txt", "My Long Name.txt"},
});

constexpr auto extension_options = std::to_array<MethodOption>({
    {"upper", "", Kind::none, "UPPER CASE", extension_case<1>, what},
    {"lower", "", Kind::none, "lower case", extension_case<2>, what},
    {"proper", "", Kind::none, "First letter a capital", extension_case<3>, what},
    {"remove", "", Kind::none, "remove it", [](S& s, const V&) { s.generalOptionIndex = 2; }, what},
    {"change", "EXT", Kind::text, "EXT instead of it, or added where there is none",
     [](S& s, const V& v) {
       s.generalOptionIndex = 3;
       s.generalChangeExtension = v.text.substr(v.text.starts_with(u'.') ? 1 : 0);
     },
     what},
});
constexpr auto extension_examples = std::to_array<Example>({
    {"extension --lower", "IMG_9.JPG", "IMG_9.jpg"},
    {"extension --change jpg", "IMG_9.jpeg", "IMG_9.jpg"},
});

constexpr auto reverse_examples = std::to_array<Example>({{"reverse", "abc.txt", "cba.txt"}});
constexpr auto spaces_examples = std::to_array<Example>({{"spaces", "a long name.txt", "alongname.txt"}});

constexpr auto swap_options = std::to_array<MethodOption>({
    {"separator", "TEXT", Kind::text, "around the first TEXT",
     [](S& s, const V& v) { s.generalOptionIndex = 6, s.generalSwapSeperator = v.text; }, what},
    {"at", "N", Kind::number, "around character N, from 1",
     [](S& s, const V& v) { s.generalOptionIndex = 7, s.generalSwapPosition = v.text; }, what},
});
constexpr auto swap_examples = std::to_array<Example>({
    {"swap --separator ' - '", "Tiersen - Porz Goret.mp3", "Porz Goret - Tiersen.mp3"},
    {"swap --at 3", "abcde.txt", "decab.txt"},
});

constexpr auto trim_options = std::to_array<MethodOption>({
    {"after", "TEXT", Kind::text, "remove everything behind TEXT",
     [](S& s, const V& v) { s.generalOptionIndex = 8, s.generalRemoveAfterString = v.text; }, what},
    {"from", "TEXT", Kind::text, "remove TEXT and everything behind it",
     [](S& s, const V& v) { s.generalOptionIndex = 9, s.generalRemoveFromString = v.text; }, what},
    {"occurrence",
     "N",
     Kind::number,
     "which TEXT, when the name holds several (1)",
     [](S& s, const V& v) { s.generalRemoveAfterStringOccurrence = s.generalRemoveFromStringOccurrence = v.text; },
     {},
     "after|from"},
});
constexpr auto trim_examples = std::to_array<Example>({
    {"trim --from ' ('", "IMG_9 (copy).jpg", "IMG_9.jpg"},
    {"trim --after - --occurrence 2", "a-b-c.txt", "a-b-.txt"},
});

constexpr auto mask_operands =
    std::to_array<MethodOperand>({{"MASK", Kind::text, "its length is the length of every name",
                                   [](S& s, const V& v) { s.generalFilenameMask = v.text; }}});
constexpr auto mask_examples = std::to_array<Example>({
    {"mask 0000", "7.jpg", "0007.jpg"},
    {"mask 000", "12345.jpg", "345.jpg"},
});

constexpr auto windows_options = std::to_array<MethodOption>({
    {"with", "TEXT", Kind::text, "what takes the place of each (nothing: they are removed)",
     [](S& s, const V& v) { s.generalConvertWindowsCompatibleString = v.text; }},
});
constexpr auto windows_examples = std::to_array<Example>({{"windows-safe --with _", "why?.txt", "why_.txt"}});

// Path components.

constexpr auto path_own_options = std::to_array<MethodOption>({
    {"level", "N", Kind::number, "how many folders, counted from the innermost (1); -1: all",
     [](S& s, const V& v) { s.pathComponentsLevelNo = v.number; }},
    {"separator", "TEXT", Kind::text, "between two folder names",
     [](S& s, const V& v) { s.pathComponentsSeparator = v.text; }},
    {"text-before", "TEXT", Kind::text, "a text before the folder names",
     [](S& s, const V& v) { s.pathComponentsPrefix = v.text; }},
    {"text-after", "TEXT", Kind::text, "a text behind the folder names",
     [](S& s, const V& v) { s.pathComponentsSuffix = v.text; }},
});
constexpr auto path_options =
    join(path_own_options, placement_options<&S::pathComponentsOptionsIndex, &S::pathComponentsAtPositionNo,
                                             &S::pathComponentsAtPositionDirection, &S::pathComponentsAtBeforeText,
                                             &S::pathComponentsAtBeforeOccurrence, &S::pathComponentsAtAfterText,
                                             &S::pathComponentsAtAfterOccurrence>());
constexpr auto path_examples = std::to_array<Example>({
    {"path --text-after ' - '", "Brest/IMG_9.jpg", "Brest - IMG_9.jpg"},
    {"path --level 2 --separator _ --at-end --text-before _", "Trip/Brest/IMG_9.jpg", "IMG_9_Trip_Brest.jpg"},
});

template <std::int32_t index>
constexpr FillSettings general_option = [](S& s, const V&) { s.generalOptionIndex = index; };

// Audio tags and photo metadata.

template <auto is_on, auto separator, auto replaces, auto replacement>
constexpr std::array<MethodOption, 2> mask_options() {
  return {{
      {"separator", "TEXT", Kind::text, "between the values that are there; not behind a text of your own",
       [](S& s, const V& v) { s.*is_on = true, s.*separator = v.text; }},
      {"replace-colons", "TEXT", Kind::text, "instead of each \":\" in a value",
       [](S& s, const V& v) { s.*replaces = true, s.*replacement = v.text; }},
  }};
}

constexpr auto audio_operands = std::to_array<MethodOperand>(
    {{"MASK", Kind::text,
      "<Artist> <Year> <Genre> <Title> <Album> <Comments> <TrackNumber> <Composer>, and text between",
      [](S& s, const V& v) { s.id3RenamingMask = v.text, s.id3RenamingTagsList = fields_of_mask(v.text); }}});
constexpr auto audio_own_options = std::to_array<MethodOption>({
    {"extensions", "LIST", Kind::text, "which files take part (.mp3;.m4a;.aac;.m4b)",
     [](S& s, const V& v) { set_from_text(s, "id3Extensions", to_utf8(v.text)); }},
});
constexpr auto audio_options = join(mask_options<&S::isID3RenamingSeperator, &S::id3RenamingSeperator,
                                                 &S::isID3RenamingColonReplace, &S::id3RenamingColonReplace>(),
                                    audio_own_options);
constexpr auto audio_examples = std::to_array<Example>({
    {"audio '<TrackNumber> <Title>'", "", ""},
    {"audio '<Artist><Album><Title>' --separator ' - '", "", ""},
});

constexpr auto photo_operands = std::to_array<MethodOperand>(
    {{"MASK", Kind::text, "tokens such as <EXIF_Date> (brindle fields lists them), and text between",
      [](S& s, const V& v) { s.photoMetaDataList = fields_of_mask(v.text), resetPhotoMask(s); }}});
constexpr auto photo_own_options = std::to_array<MethodOption>({
    {"date-parts", "PATTERN", Kind::pattern, "how dates are written (ddMMyyyy)",
     fill_pattern<&S::photoDatePart1, &S::photoDateSeperator1, &S::photoDatePart2, &S::photoDateSeperator2,
                  &S::photoDatePart3>},
    {"time-parts", "PATTERN", Kind::pattern, "how times are written (HHmmss)",
     fill_pattern<&S::photoTimePart1, &S::photoTimeSeperator1, &S::photoTimePart2, &S::photoTimeSeperator2,
                  &S::photoTimePart3>},
    {"number-mask", "MASK", Kind::text, "fills <SEQUENCES_Number_Sequence> up: 000 makes 7 into 007",
     [](S& s, const V& v) { s.photoPaddingMask = v.text; }},
    {"restart", "", Kind::none, "count from 1 in each folder; the items are sorted by folder and name for it",
     [](S& s, const V&) { s.isPhotoResetSequenceOnEachFolder = true; }},
    {"extensions", "LIST", Kind::text, "which files take part (.jpg;.jpeg;.exif;.tif;.tiff)",
     [](S& s, const V& v) { set_from_text(s, "photoExtensions", to_utf8(v.text)); }},
});
constexpr auto photo_options = join(mask_options<&S::isPhotoRenamingSeperator, &S::photoRenamingSeperator,
                                                 &S::isPhotoRenamingColonReplace, &S::photoRenamingColonReplace>(),
                                    photo_own_options);
constexpr auto photo_examples = std::to_array<Example>({
    {"photo '<EXIF_Date>_<EXIF_Time>' --date-parts yyyy-MM-dd", "", ""},
    {"photo '<EXIF_Date> <SEQUENCES_Number_Sequence>' --number-mask 000 --restart --extensions '.jpg;.heic;.cr2'", "",
     ""},
});
constexpr std::string_view photo_note =
    "A file without values is left with the texts of your own, and keeps its name when there are none. Pictures of one "
    "second need <SEQUENCES_Number_Sequence> too.";

// clang-format off
constexpr auto methods = std::to_array<MethodRow>({
    {"insert", "put a text into the name", "", insert, insert_operands, insert_options, 0, nullptr, insert_examples},
    {"delete", "cut characters out of the name", "", delete_characters, delete_operands, delete_options, 0, nullptr,
     delete_examples},
    {"replace", "replace a text by another", "", replace, replace_operands, search_options, 0, nullptr, replace_examples},
    {"remove", "remove a text, characters, or what stands between", "", remove, remove_operands, remove_options, 0, nullptr,
     remove_examples},
    {"number", "number the items", order_note, numeric, {}, number_options, 0, nullptr, number_examples},
    {"letter", "letter the items: a, b, ... z, aa", order_note, alphabetic, {}, letter_options, 0, nullptr, letter_examples},
    {"prefix", "put a text or a date before the name", pattern_note, as_string, prefix_operands, prefix_options, 0, nullptr,
     prefix_examples},
    {"suffix", "put a text or a date behind the name", pattern_note, as_string, suffix_operands, suffix_options, 0, nullptr,
     suffix_examples},
    {"date", "put a date and time anywhere into the name", pattern_note, date_time, {}, date_options, 0, nullptr,
     date_examples},
    {"case", "change upper and lower case of the name", "", general, {}, case_options, one_of_what, nullptr, case_examples},
    {"extension", "change, remove or add the extension", "", general, {}, extension_options, one_of_what, nullptr,
     extension_examples},
    {"reverse", "write the name backwards", "", general, {}, {}, 0, general_option<4>, reverse_examples},
    {"spaces", "remove all spaces from the name", "", general, {}, {}, 0, general_option<5>, spaces_examples},
    {"swap", "swap the two halves of the name", "", general, {}, swap_options, one_of_what, nullptr, swap_examples},
    {"trim", "cut the end of the name off", "", general, {}, trim_options, one_of_what, nullptr, trim_examples},
    {"mask", "bring names to one length",
     "Shorter names are filled up with the mask's first characters, longer ones keep their end.",
     general, mask_operands, {}, 0, general_option<10>, mask_examples},
    {"windows-safe", "replace what Windows forbids in names: / \\ : * ? \" < > |", "", general, {}, windows_options, 0,
     general_option<11>, windows_examples},
    {"path", "put the names of the folders into the name", "", path_components, {}, path_options, 0, nullptr, path_examples},
    {"audio", "name songs by their tags", "A file without tags is left with the texts of your own, and keeps its name when there are none.", id3_tag, audio_operands, audio_options, 0,
     nullptr, audio_examples},
    {"photo", "name photos by what they say of themselves", photo_note, photo, photo_operands, photo_options, 0, nullptr,
     photo_examples},
});
// clang-format on

}  // namespace

std::span<const MethodRow> method_table() {
  return methods;
}

const MethodRow* find_method(std::string_view word) {
  const auto row = std::ranges::find(methods, word, &MethodRow::word);
  return row == methods.end() ? nullptr : &*row;
}

const MethodOption* find_option(const MethodRow& method, std::string_view name) {
  const auto row = std::ranges::find(method.options, name, &MethodOption::name);
  return row == method.options.end() ? nullptr : &*row;
}

}  // namespace brindle
