#pragma once

// One method of a command line, its values read, and what it means to the settings.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/method_words.h"
#include "settings/rename_settings.h"

namespace brindle {

/// A date pattern such as "yyyy-MM-dd" taken apart: part, separator, part, separator, part. A part is a run of one
/// letter; what stands between, '…' included, is a separator. Absent parts are "None". None when the pattern does not
/// begin with a part, has more than three, or goes on behind the third.
std::optional<std::array<std::u16string, 5>> split_pattern(std::u16string_view pattern);

/// "a|b|c" as "a", "b", "c".
std::vector<std::string_view> split_choices(std::string_view choices);

/// Reads a value. `name` is the option or operand, `form` how help calls the value (the words of a choice). Throws
/// UsageError when the text is none of that kind.
OptionValue read_value(ValueKind kind, std::string_view name, std::string_view form, std::string_view text);

/// A method with what was given to it.
struct MethodCall {
  const MethodWord* method = nullptr;
  std::vector<OptionValue> operands;
  std::vector<std::pair<const MethodOption*, OptionValue>> options;
};

/// Whether a further word would be one too many, or begin something else.
bool has_its_operands(const MethodCall& call);

/// An option given again replaces the value before; one that contradicts another throws UsageError.
void add_option(MethodCall& call, const MethodOption& option, OptionValue value);

/// Throws UsageError when something is missing, or goes with nothing.
void check_call(const MethodCall& call);

/// Fills the settings with what a checked call says: the method's tab is selected, its options and the choices that
/// show them are set, everything else stays.
void fill_settings(RenameSettings& settings, const MethodCall& call);

}  // namespace brindle
