#pragma once

// What a command line asks of the rename methods.

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "cli/arguments.h"
#include "methods/rename_plan.h"
#include "methods/rule.h"
#include "methods/validation.h"
#include "platform/date.h"
#include "settings/rename_settings.h"

namespace brindle {

/// Settings that are complete and normalised.
struct RenameRequest {
  RenameSettings
      settings;  ///< of the method; with a chain, only the choices of all methods count (files or folders, …)
  std::vector<Rule> rules;  ///< the chain; empty for a single method
  RunChoices choices;
  Date now{};                         ///< the start of the run
  std::optional<Date> date_left_out;  ///< of the profile, where the start of the run would come into the names instead

  /// Which items there are, and their new names, is said by a list file, `settings.renameFile`.
  bool is_from_list() const { return !is_chain() && selected_method(settings) == Method::from_list; }
  bool is_chain() const { return !rules.empty(); }
  RenamePlan plan() const { return is_chain() ? RenamePlan(rules, now) : RenamePlan(settings, now); }
};

/// What a request must say.
enum class Demand : std::uint8_t {
  method,          ///< how to rename
  method_or_none,  ///< how to rename, or nothing about it: a list without new names, a profile of settings alone
};

/// What methods start from.
struct CommonSettings {
  RenameSettings settings;
  std::optional<Date> date_left_out;  ///< of the profile: the settings have `now`
  RunChoices choices;
};
/// The defaults, those of --profile, and files or folders as the line says. Throws UsageError when the profile cannot
/// be read, or chooses no method although it must.
CommonSettings common_settings(const Options& options, Date now, bool must_choose_method = false);

/// Fills in the methods of the line, then the --set options (in a chain: for each of its methods); or takes the chain
/// of
/// --rules, or the list of --list. A method that lacks a text is refused. Throws UsageError when the line does not say
/// how to rename, a file cannot be used, or a --set is wrong or says nothing.
std::variant<RenameRequest, Refusal> make_request(const CommandLine& line, Date now, Demand demand = Demand::method);

/// Whether the line says how to rename: with a method, a --set, or a file.
bool says_how(const CommandLine& line);

/// One rule a method of the line, each with the --set options. Throws UsageError.
std::variant<std::vector<Rule>, Refusal> make_rules(const CommandLine& line, const RenameSettings& common);

/// "The text to insert is missing. Enter a text.", in the user's language.
std::string describe(const Refusal& refusal);

}  // namespace brindle
