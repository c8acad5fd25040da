#include "cli/method_rows.h"
#include "methods/general.h"
#include "methods/insert_delete.h"
#include "methods/sequence.h"

namespace brindle {
namespace {

using S = RenameSettings;
using V = OptionValue;
using Kind = ValueKind;
using enum RuleVariant;
using option_group::one_of_what;
using option_group::what;

// Insert and delete.

constexpr auto insert_operands =
    std::to_array<MethodOperand>({{"TEXT", Kind::text, to_translate("the text to insert"),
                                   [](S& s, const V& v) { s.insertDeleteInsert = v.text; }}});
constexpr auto insert_options = placement_options<insert_placement>();
constexpr auto insert_examples = std::to_array<Example>({
    {"insert 'Brest - '", "IMG_9.jpg", "Brest - IMG_9.jpg"},
    {"insert _small --at-end", "IMG_9.jpg", "IMG_9_small.jpg"},
    {"insert 2026- --after _", "IMG_9.jpg", "IMG_2026-9.jpg"},
});

constexpr auto delete_operands =
    std::to_array<MethodOperand>({{"COUNT", Kind::number, to_translate("how many characters"),
                                   [](S& s, const V& v) { s.insertDeleteNumberOfCharacters = v.text; }}});
constexpr auto delete_options = std::to_array<MethodOption>({
    {"at", "N", Kind::number, to_translate("the first character to delete, from 1 (1)"),
     [](S& s, const V& v) { s.insertDeleteFromCharacterPosition = v.text; }},
    {"from-end", "", Kind::none,
     to_translate("count from the end: 1 is the last character, and the deleted ones stand before it"),
     [](S& s, const V&) { s.isInsertDeleteDeleteFromBackWard = true; }},
});
constexpr auto delete_examples = std::to_array<Example>({
    {"delete 4", "IMG_9.jpg", "9.jpg"},
    {"delete 7 --from-end", "IMG_9 (copy).jpg", "IMG_9.jpg"},
});

// Replace and remove. "Remove characters" is a variant of its own only when it takes all of them, as it always does.

constexpr auto search_options = std::to_array<MethodOption>({
    {"all", "", Kind::none, to_translate("every one; else the first alone"),
     [](S& s, const V&) { s.isReplaceRemoveAllOccurrence = true; }, "aon"},
    {"occurrence", "N", Kind::number, to_translate("begin with the N-th (1)"),
     [](S& s, const V& v) { s.replaceRemoveStartOnOccurrence = v.text; }, "oc"},
    {"count", "N", Kind::number, to_translate("how many, from there on (1; -1: all)"),
     [](S& s, const V& v) { s.replaceRemoveOccuranceCount = v.text; }, "nd"},
    {"case-sensitive", "", Kind::none, to_translate("upper and lower case differ"),
     [](S& s, const V&) { s.isReplaceRemoveCaseSensitive = true; }},
    {"from", "N", Kind::number, to_translate("leave what stands before character N alone (1)"),
     [](S& s, const V& v) { s.replaceRemoveStartFromCharacter = v.text; }},
    {"backward", "", Kind::none, to_translate("read the name from its end, letter by letter: \"ab\" finds \"ba\""),
     [](S& s, const V&) { s.replaceRemovePositionDirection = 1; }},
});
constexpr auto replace_operands = std::to_array<MethodOperand>({
    {"THIS", Kind::text, to_translate("the text to look for"), [](S& s, const V& v) { s.replaceRemoveThis = v.text; }},
    {"WITH", Kind::text, to_translate("what takes its place"), [](S& s, const V& v) { s.replaceRemoveWith = v.text; }},
});
constexpr auto replace_examples = std::to_array<Example>({
    {"replace _ ' ' --all", "a_long_name.txt", "a long name.txt"},
    {"replace img Photo", "IMG_9.jpg", "Photo_9.jpg"},
    {"replace - + --occurrence 2", "2026-11-21.txt", "2026-11+21.txt"},
});

constexpr auto remove_operands =
    std::to_array<MethodOperand>({{"TEXT", Kind::text, to_translate("the text to look for"),
                                   [](S& s, const V& v) { s.replaceRemoveThis = v.text; }}});
constexpr void remove_by_type(S& s, std::int32_t type) {
  s.isReplaceRemoveRemoveCharacters = true;
  s.isReplaceRemoveAllOccurrence = true;
  s.replaceRemoveRemoveType = type;
}
constexpr auto remove_what = std::to_array<MethodOption>({
    {"characters",
     "",
     Kind::none,
     to_translate("TEXT is a set of characters: remove each of them, wherever it stands"),
     [](S& s, const V&) { remove_by_type(s, 0); },
     "wacd",
     {},
     false,
     remove_characters},
    {"between",
     "",
     Kind::none,
     to_translate("remove what stands between two TEXTs; when there is no second, to the end"),
     [](S& s, const V&) { remove_by_type(s, 1); },
     "wa",
     {},
     false,
     remove_characters},
    {"with-ends",
     "",
     Kind::none,
     to_translate("the two TEXTs as well"),
     [](S& s, const V&) { remove_by_type(s, 2); },
     {},
     "between"},
});
constexpr auto remove_options = join(remove_what, search_options);
constexpr auto remove_examples = std::to_array<Example>({
    {"remove ' (copy)'", "IMG_9 (copy).jpg", "IMG_9.jpg"},
    {"remove --characters '()[]'", "IMG_9 (copy).jpg", "IMG_9 copy.jpg"},
    {"remove --between - --with-ends", "IMG-2026-9.jpg", "IMG9.jpg"},
});

// Number and letter sequences.

template <const CounterMembers& counter>
constexpr std::array<MethodOption, 8> sequence_options(MethodOption first) {
  first.fill = [](S& s, const V& v) { s.*counter.start = v.text; };
  return {{
      first,
      {"step", "N", Kind::number, to_translate("from one item to the next (1)"),
       [](S& s, const V& v) { s.alphaNumericIncrementBy = s.alphaNumericDecrementBy = v.text; }},
      {"down", "", Kind::none, to_translate("count down"),
       [](S& s, const V&) { s.isAlphaNumericIncrement = false, s.isAlphaNumericDecrement = true; }},
      {"mask", "MASK", Kind::text,
       to_translate("its length is the width and its first characters fill up: 000 makes 7 into 007"),
       [](S& s, const V& v) { s.alphaNumericPaddingMask = v.text; }},
      {"prefix", "", Kind::none, to_translate("before the name; without --prefix and --suffix the name is replaced"),
       [](S& s, const V&) { s.isAlphaNumericPrefix = true; }},
      {"suffix", "", Kind::none, to_translate("behind the name, before its extension"),
       [](S& s, const V&) { s.isAlphaNumericSufix = true; }},
      {"separator",
       "TEXT",
       Kind::text,
       to_translate("between the two"),
       [](S& s, const V& v) { s.isAlphaNumericSeperator = true, s.alphaNumericSeperator = v.text; },
       {},
       "prefix|suffix"},
      {"restart", "", Kind::none,
       to_translate("start again in each folder; the items are sorted by folder and name for it"),
       [](S& s, const V&) { s.isAlphaNumericResetSequenceOnEachFolder = true; }},
  }};
}
constexpr auto number_options =
    sequence_options<number_counter>({"start", "N", Kind::number, to_translate("the first number (0)")});
constexpr auto letter_options = sequence_options<letter_counter>(
    {"start", "LETTERS", Kind::letters, to_translate("the first letters, a to z (a)")});
constexpr auto number_examples = std::to_array<Example>({
    {"number --start 1 --mask 000", "IMG_9.jpg", "001.jpg"},
    {"number --start 10 --suffix --separator -", "IMG_9.jpg", "IMG_9-10.jpg"},
});
constexpr auto letter_examples = std::to_array<Example>({
    {"letter --prefix --separator ' - '", "IMG_9.jpg", "a - IMG_9.jpg"},
    {"letter --start az", "IMG_9.jpg", "az.jpg"},
});
constexpr std::string_view order_note = to_translate(
    "The items are counted in the order of the list: as you name them, and within a folder as the disk lists it. Give "
    "--sort name or --sort folder before the method to count them by name.");

// clang-format off
constexpr auto text_rows = std::to_array<MethodWord>({
    {"insert", to_translate("put a text into the name"), "", insert, insert_operands, insert_options, 0, nullptr, insert_examples},
    {"delete", to_translate("cut characters out of the name"), "", delete_characters, delete_operands, delete_options, 0, nullptr,
     delete_examples},
    {"replace", to_translate("replace a text by another"), "", replace, replace_operands, search_options, 0, nullptr, replace_examples},
    {"remove", to_translate("remove a text, characters, or what stands between"), "", remove, remove_operands, remove_options, 0, nullptr,
     remove_examples},
    {"number", to_translate("number the items"), order_note, numeric, {}, number_options, 0, nullptr, number_examples},
    {"letter", to_translate("letter the items: a, b, ... z, aa"), order_note, alphabetic, {}, letter_options, 0, nullptr, letter_examples},
});
// clang-format on

// General transformations.

constexpr void choose(S& s, GeneralOption option) {
  s.generalOptionIndex = static_cast<std::int32_t>(option);
}

template <std::int32_t value>
constexpr FillSettings name_case =
    [](S& s, const V&) { choose(s, GeneralOption::convert_filename_case), s.generalFileNameCase = value; };
template <std::int32_t value>
constexpr FillSettings extension_case =
    [](S& s, const V&) { choose(s, GeneralOption::convert_extension), s.generalExtensionCase = value; };

constexpr auto case_options = std::to_array<MethodOption>({
    {"upper", "", Kind::none, to_translate("UPPER CASE"), name_case<1>, what},
    {"lower", "", Kind::none, to_translate("lower case"), name_case<2>, what},
    {"proper", "", Kind::none, to_translate("Every Word With A Capital"), name_case<3>, what},
});
constexpr auto case_examples = std::to_array<Example>({
    {"case --lower", "IMG_9.JPG", "img_9.JPG"},
    {"case --proper", "my long NAME.txt", "My Long Name.txt"},
});

constexpr auto extension_options = std::to_array<MethodOption>({
    {"upper", "", Kind::none, to_translate("UPPER CASE"), extension_case<1>, what},
    {"lower", "", Kind::none, to_translate("lower case"), extension_case<2>, what},
    {"proper", "", Kind::none, to_translate("First letter a capital"), extension_case<3>, what},
    {"remove", "", Kind::none, to_translate("remove it"),
     [](S& s, const V&) { choose(s, GeneralOption::remove_extension); }, what},
    {"change", "EXT", Kind::text, to_translate("EXT instead of it, or added where there is none"),
     [](S& s, const V& v) {
       choose(s, GeneralOption::change_extension);
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
    {"separator", "TEXT", Kind::text, to_translate("around the first TEXT"),
     [](S& s, const V& v) { choose(s, GeneralOption::swap_from_seperator), s.generalSwapSeperator = v.text; }, what},
    {"at", "N", Kind::number, to_translate("around character N, from 1"),
     [](S& s, const V& v) { choose(s, GeneralOption::swap_from_position), s.generalSwapPosition = v.text; }, what},
});
constexpr auto swap_examples = std::to_array<Example>({
    {"swap --separator ' - '", "Tiersen - Porz Goret.mp3", "Porz Goret - Tiersen.mp3"},
    {"swap --at 3", "abcde.txt", "decab.txt"},
});

constexpr auto trim_options = std::to_array<MethodOption>({
    {"after", "TEXT", Kind::text, to_translate("remove everything behind TEXT"),
     [](S& s, const V& v) { choose(s, GeneralOption::remove_after_string), s.generalRemoveAfterString = v.text; },
     what},
    {"from", "TEXT", Kind::text, to_translate("remove TEXT and everything behind it"),
     [](S& s, const V& v) { choose(s, GeneralOption::remove_from_string), s.generalRemoveFromString = v.text; }, what},
    {"occurrence",
     "N",
     Kind::number,
     to_translate("which TEXT, when the name holds several (1)"),
     [](S& s, const V& v) { s.generalRemoveAfterStringOccurrence = s.generalRemoveFromStringOccurrence = v.text; },
     {},
     "after|from"},
});
constexpr auto trim_examples = std::to_array<Example>({
    {"trim --from ' ('", "IMG_9 (copy).jpg", "IMG_9.jpg"},
    {"trim --after - --occurrence 2", "a-b-c.txt", "a-b-.txt"},
});

constexpr auto mask_operands =
    std::to_array<MethodOperand>({{"MASK", Kind::text, to_translate("its length is the length of every name"),
                                   [](S& s, const V& v) { s.generalFilenameMask = v.text; }}});
constexpr auto mask_examples = std::to_array<Example>({
    {"mask 0000", "7.jpg", "0007.jpg"},
    {"mask 000", "12345.jpg", "345.jpg"},
});

constexpr auto windows_options = std::to_array<MethodOption>({
    {"with", "TEXT", Kind::text, to_translate("what takes the place of each (nothing: they are removed)"),
     [](S& s, const V& v) { s.generalConvertWindowsCompatibleString = v.text; }},
});
constexpr auto windows_examples = std::to_array<Example>({{"windows-safe --with _", "why?.txt", "why_.txt"}});

template <GeneralOption option>
constexpr FillSettings general_option = [](S& s, const V&) { choose(s, option); };

// clang-format off
constexpr auto general_rows = std::to_array<MethodWord>({
    {"case", to_translate("change upper and lower case of the name"), "", general, {}, case_options, one_of_what, nullptr, case_examples},
    {"extension", to_translate("change, remove or add the extension"), "", general, {}, extension_options, one_of_what, nullptr,
     extension_examples},
    {"reverse", to_translate("write the name backwards"), "", general, {}, {}, 0, general_option<GeneralOption::reverse>, reverse_examples},
    {"spaces", to_translate("remove all spaces from the name"), "", general, {}, {}, 0, general_option<GeneralOption::remove_spaces>, spaces_examples},
    {"swap", to_translate("swap the two halves of the name"), "", general, {}, swap_options, one_of_what, nullptr, swap_examples},
    {"trim", to_translate("cut the end of the name off"), "", general, {}, trim_options, one_of_what, nullptr, trim_examples},
    {"mask", to_translate("bring names to one length"),
     to_translate("Shorter names are filled up with the mask's first characters, longer ones keep their end."),
     general, mask_operands, {}, 0, general_option<GeneralOption::filename_mask>, mask_examples},
    {"windows-safe", to_translate("replace what Windows forbids in names: / \\ : * ? \" < > |"), "", general, {}, windows_options, 0,
     general_option<GeneralOption::convert_windows_compatible>, windows_examples},
});
// clang-format on

}  // namespace

std::span<const MethodWord> text_method_rows() {
  return text_rows;
}

std::span<const MethodWord> general_method_rows() {
  return general_rows;
}

}  // namespace brindle
