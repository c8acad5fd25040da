#pragma once

// One method of a command line, and what it means to the settings.

#include <utility>
#include <vector>

#include "cli/method_words.h"
#include "settings/rename_settings.h"

namespace brindle {

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
