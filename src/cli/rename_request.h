#pragma once

// What a command line asks of the rename methods.

#include <string>
#include <variant>
#include <vector>

#include "cli/arguments.h"
#include "pipeline/rename_plan.h"
#include "platform/date.h"
#include "settings/rename_settings.h"
#include "settings/rule.h"
#include "settings/validation.h"

namespace brindle {

/// Settings that are complete and normalised.
struct RenameRequest {
  RenameSettings
      settings;  ///< of the method; with a chain, only the choices of all methods count (files or folders, …)
  std::vector<Rule> rules;  ///< the chain; empty for a single method
  Date now{};               ///< the start of the run

  bool is_chain() const { return !rules.empty(); }
  RenamePlan plan() const { return is_chain() ? RenamePlan(rules, now) : RenamePlan(settings, now); }
};

/// Starts from the default settings, fills in the methods, then the --set options (in a chain: for each of its
/// methods). A method that lacks a text is refused. Throws UsageError when the line says nothing about how to rename,
/// or a --set is wrong.
std::variant<RenameRequest, Refusal> make_request(const CommandLine& line, Date now);

/// "The text to insert is missing. Enter a text.", in the user's language.
std::string describe(const Refusal& refusal);

}  // namespace brindle
