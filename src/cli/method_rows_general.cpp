#include "cli/method_rows.h"
#include "methods/general.h"

namespace brindle {
namespace {

using S = RenameSettings;
using V = OptionValue;
using Kind = ValueKind;
using enum RuleVariant;
using option_group::one_of_what;
using option_group::what;

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

std::span<const MethodWord> general_method_rows() {
  return general_rows;
}

}  // namespace brindle
