#include "methods/general.h"

#include <algorithm>
#include <stdexcept>

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
    if (too_long_[found]) throw std::length_error("the replacement holds too many of the characters to be replaced");
    out.append(becomes_[found]);
  }
}

GeneralParameters::GeneralParameters(const GeneralArguments& arguments)
    : option(static_cast<GeneralOption>(arguments.generalOptionIndex)), letter_case(0), number(0) {
  switch (option) {
    case GeneralOption::convert_filename_case:
      letter_case = arguments.generalFileNameCase;
      break;
    case GeneralOption::convert_extension:
      letter_case = arguments.generalExtensionCase;
      break;
    case GeneralOption::change_extension:
      text = on_disk(arguments.generalChangeExtension);
      break;
    case GeneralOption::swap_from_seperator:
      search = {on_disk(arguments.generalSwapSeperator), false};
      break;
    case GeneralOption::swap_from_position:
      number = arguments.generalSwapPosition;
      break;
    case GeneralOption::remove_after_string:
      search = {on_disk(arguments.generalRemoveAfterString), true};
      number = arguments.generalRemoveAfterStringOccurrence;
      break;
    case GeneralOption::remove_from_string:
      search = {on_disk(arguments.generalRemoveFromString), true};
      number = arguments.generalRemoveFromStringOccurrence;
      break;
    case GeneralOption::filename_mask:
      text = on_disk(arguments.generalFilenameMask);
      break;
    case GeneralOption::convert_windows_compatible:
      windows = WindowsReplacements(arguments.generalConvertWindowsCompatibleString);
      break;
    default:
      break;
  }
}

NameOutcome general_text(const GeneralParameters& parameters, ItemType type, WorkingName& name) {
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

bool renameByGeneral(FileSystemItem& item, const GeneralParameters& parameters, WorkingName& name,
                     std::u16string& error) {
  const ItemType type = item.itemType();
  return rename_operation(item, name, error,
                          [&](WorkingName& working) { return general_text(parameters, type, working); });
}

}  // namespace brindle
