#include "cli/method_rows.h"
#include "methods/insert_delete.h"
#include "methods/sequence.h"

namespace brindle {
namespace {

using S = RenameSettings;
using V = OptionValue;
using Kind = ValueKind;
using enum RuleVariant;

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

}  // namespace

std::span<const MethodWord> text_method_rows() {
  return text_rows;
}

}  // namespace brindle
