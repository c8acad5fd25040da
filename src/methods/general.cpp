#include "methods/general.h"

#include <algorithm>
#include <stdexcept>

#include "platform/translation.h"
#include "text/string_utilities.h"
#include "text/text_case.h"

namespace brindle {
namespace {

constexpr std::size_t longest_replacement = 65'536;

void append_in_case(std::u16string_view text, std::int32_t letter_case, std::u16string& out) {
  switch (letter_case) {
    case 1:
      return append_upper_case(text, out);
    case 2:
      return append_lower_case(text, out);
    case 3:
      return append_proper_case(text, out);
    default:
      out.append(text);
  }
}

NameOutcome change_extension(const std::u16string& extension, ItemType type, WorkingName& name) {
  name.result.append(name.base);
  if (type == ItemType::file) name.result.append(1, u'.').append(extension);
  return NameOutcome::whole;
}

NameOutcome convert_extension(std::int32_t letter_case, WorkingName& name) {
  name.result.append(name.base);
  if (!name.extension.empty()) {
    name.result.push_back(u'.');
    append_in_case(name.extension, letter_case, name.result);
  }
  return NameOutcome::whole;
}

void append_fitted(std::u16string_view text, std::u16string_view mask, std::u16string& out) {
  const bool cut = !mask.empty() && text.size() > mask.size();
  append_padded(cut ? text.substr(text.size() - mask.size()) : text, mask, out);
}

}  // namespace

WindowsReplacements::WindowsReplacements(std::u16string_view replacement) {
  // From the last character on, so that what a later one becomes is known when it turns up in an earlier replacement.
  for (std::size_t i = forbidden.size(); i-- > 0;) {
    for (const char16_t unit : replacement) {
      const std::size_t later = forbidden.find(unit);
      const bool is_replaced = later != std::u16string_view::npos && later > i;
      becomes_[i].append(is_replaced ? std::u16string_view(becomes_[later]) : std::u16string_view(&unit, 1));
      too_long_[i] = (is_replaced && too_long_[later]) || becomes_[i].size() > longest_replacement;
      if (too_long_[i]) break;
    }
  }
}

void WindowsReplacements::append_compatible(std::u16string_view text, std::u16string& out) const {
  for (const char16_t unit : text) {
    const std::size_t found = unit < 0x80 ? forbidden.find(unit) : std::u16string_view::npos;
    if (found == std::u16string_view::npos) {
      out.push_back(unit);
      continue;
    }
    if (too_long_[found]) {
      throw std::length_error(
          std::string(to_translate("the replacement holds too many of the characters to be replaced")));
    }
    out.append(becomes_[found]);
  }
}

GeneralParameters::GeneralParameters(const RenameSettings& settings)
    : option(static_cast<GeneralOption>(settings.generalOptionIndex)) {
  switch (option) {
    case GeneralOption::convert_filename_case:
      letter_case = settings.generalFileNameCase;
      break;
    case GeneralOption::convert_extension:
      letter_case = settings.generalExtensionCase;
      break;
    case GeneralOption::change_extension:
      text = on_disk(text_of(settings.generalChangeExtension));
      break;
    case GeneralOption::swap_from_seperator:
      search = {on_disk(text_of(settings.generalSwapSeperator)), false};
      break;
    case GeneralOption::swap_from_position:
      number = integer_of(settings.generalSwapPosition);
      break;
    case GeneralOption::remove_after_string:
      search = {on_disk(text_of(settings.generalRemoveAfterString)), true};
      number = integer_of(settings.generalRemoveAfterStringOccurrence);
      break;
    case GeneralOption::remove_from_string:
      search = {on_disk(text_of(settings.generalRemoveFromString)), true};
      number = integer_of(settings.generalRemoveFromStringOccurrence);
      break;
    case GeneralOption::filename_mask:
      text = on_disk(text_of(settings.generalFilenameMask));
      break;
    case GeneralOption::convert_windows_compatible:
      windows = WindowsReplacements(text_of(settings.generalConvertWindowsCompatibleString));
      break;
    default:
      break;
  }
}

NameOutcome GeneralParameters::make_name(StepRun& run) const {
  return renameByGeneral(*this, run.item.itemType(), run.name);
}

NameOutcome renameByGeneral(const GeneralParameters& parameters, ItemType type, WorkingName& name) {
  const std::u16string_view base = name.base;
  std::u16string& result = name.result;
  switch (parameters.option) {
    case GeneralOption::convert_filename_case:
      append_in_case(base, parameters.letter_case, result);
      break;
    case GeneralOption::convert_extension:
      return convert_extension(parameters.letter_case, name);
    case GeneralOption::remove_extension:
      result.append(base);
      return NameOutcome::whole;
    case GeneralOption::change_extension:
      return change_extension(parameters.text, type, name);
    case GeneralOption::reverse:
      append_reversed(base, result);
      break;
    case GeneralOption::remove_spaces:
      std::remove_copy(base.begin(), base.end(), std::back_inserter(result), u' ');
      break;
    case GeneralOption::swap_from_seperator:
      append_swapped(base, parameters.search, result);
      break;
    case GeneralOption::swap_from_position:
      append_swapped(base, parameters.number, result);
      break;
    case GeneralOption::remove_after_string:
    case GeneralOption::remove_from_string: {
      const bool keep_match = parameters.option == GeneralOption::remove_after_string;
      append_removed(base, parameters.search, keep_match, 1, parameters.number, result);
      break;
    }
    case GeneralOption::filename_mask:
      append_fitted(base, parameters.text, result);
      break;
    case GeneralOption::convert_windows_compatible:
      parameters.windows.append_compatible(base, result);
      break;
    default:
      result.append(base);
  }
  return NameOutcome::base;
}

namespace {

using S = RenameSettings;

// By GeneralOption.
constexpr auto general_flags = std::to_array<bool S::*>(
    {&S::isGeneralConvertFilenameCase, &S::isGeneralConvertExtension, &S::isGeneralRemoveExtension,
     &S::isGeneralChangeExtension, &S::isGeneralReverseFileName, &S::isGeneralRemoveSpaces,
     &S::isGeneralSwapFromSeperator, &S::isGeneralSwapFromPostion, &S::isGeneralRemoveAfterString,
     &S::isGeneralRemoveFromString, &S::isGeneralFilenameMask, &S::isGeneralConvertWindowsCompatible});

void select_general(S& settings, RuleVariant) {
  settings.generalOptionsIndex = settings.generalOptionIndex;
  select_flag(settings, general_flags, settings.generalOptionIndex);
}

void add_case(RuleRows& rows, std::string_view label, std::int32_t letter_case) {
  constexpr std::array<std::string_view, 3> cases = {"Upper Case", "Lower Case", "Proper Case"};
  if (letter_case >= 1 && letter_case <= 3) return rows.word(label, cases[static_cast<std::size_t>(letter_case) - 1]);
  rows.number(label, letter_case);
}

void add_cut(RuleRows& rows, std::string_view label, Text S::*text, Text S::*occurrence) {
  rows.text(label, text);
  rows.text("On Occurrence", occurrence);
}

void add_general_rows(RuleRows& rows, RuleVariant) {
  switch (static_cast<GeneralOption>(rows.settings.generalOptionIndex)) {
    case GeneralOption::convert_filename_case:
      return add_case(rows, "Convert Filename to", rows.settings.generalFileNameCase);
    case GeneralOption::convert_extension:
      return add_case(rows, "Convert Extension to", rows.settings.generalExtensionCase);
    case GeneralOption::remove_extension:
      return rows.flag("Remove Extension", true);
    case GeneralOption::change_extension:
      return rows.text("Add/Change Extension", &S::generalChangeExtension);
    case GeneralOption::reverse:
      return rows.flag("Reverse Filename", true);
    case GeneralOption::remove_spaces:
      return rows.flag("Remove Spaces", true);
    case GeneralOption::swap_from_seperator:
      return rows.text("Swap Filename by separator", &S::generalSwapSeperator);
    case GeneralOption::swap_from_position:
      return rows.text("Swap Filename by position", &S::generalSwapPosition);
    case GeneralOption::remove_after_string:
      return add_cut(rows, "Remove All Characters After", &S::generalRemoveAfterString,
                     &S::generalRemoveAfterStringOccurrence);
    case GeneralOption::remove_from_string:
      return add_cut(rows, "Remove All Characters From", &S::generalRemoveFromString,
                     &S::generalRemoveFromStringOccurrence);
    case GeneralOption::filename_mask:
      return rows.text("Filename Padding Mask", &S::generalFilenameMask);
    case GeneralOption::convert_windows_compatible:
      rows.flag("Convert Filename To Windows Compatible", true);
      return rows.text("Replace With", &S::generalConvertWindowsCompatibleString);
  }
}

constexpr auto general_kinds = std::to_array<RuleKind>({{RuleVariant::general, u"General"}});

constexpr auto absent_general_options = std::to_array<AbsentOption>({
    {&S::generalChangeExtension},
    {&S::generalSwapSeperator},
    {&S::generalRemoveAfterString},
    {&S::generalRemoveFromString},
    {&S::generalConvertWindowsCompatibleString},
    {&S::generalFilenameMask},
    {&S::generalSwapPosition, u"1"},
    {&S::generalRemoveAfterStringOccurrence, u"1"},
    {&S::generalRemoveFromStringOccurrence, u"1"},
});

constexpr Requirement needed_text(Text S::*text, GeneralOption option) {
  return {text, "GENERALINVALIDINPUT", "ENTERVALIDVALUE", &S::generalOptionIndex, static_cast<std::int32_t>(option)};
}
constexpr auto general_requirements = std::to_array<Requirement>({
    needed_text(&S::generalRemoveAfterString, GeneralOption::remove_after_string),
    needed_text(&S::generalRemoveFromString, GeneralOption::remove_from_string),
    needed_text(&S::generalFilenameMask, GeneralOption::filename_mask),
});

}  // namespace

constexpr MethodRow general_method = {
    .method = Method::general,
    .title = "METHODGENERAL",
    .icon = "general",
    .rule = u"General",
    .kinds = general_kinds,
    .absent = absent_general_options,
    .required = general_requirements,
    .step = step_of<GeneralParameters>,
    .add_rows = add_general_rows,
    .select = select_general,
};

}  // namespace brindle
