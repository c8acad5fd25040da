#pragma once

// From the words of a command line to what they ask for.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command_table.h"
#include "cli/exit_code.h"
#include "cli/method_call.h"
#include "gather/list_export.h"
#include "settings/run_choices.h"

namespace brindle {

enum class ListOrder : std::uint8_t { as_found, name, folder };

/// The choices of the run that the line makes; the others are a profile's, or the usual ones.
struct GivenChoices {
  std::optional<OnProblem> on_problem;
  std::optional<std::u16string> number_pattern;
  bool permute = false;

  RunChoices over(RunChoices choices) const;
};

/// The options of the commands.
struct Options {
  std::optional<bool> folders;
  std::optional<bool> subfolders;
  bool hidden = false;
  bool no_preserve_root = false;
  ListOrder sort = ListOrder::as_found;
  std::vector<std::string> from;
  bool nul = false;
  std::vector<std::string> set;  ///< "KEY=VALUE", in order
  std::string profile;           ///< the files to start from; "" for none
  std::string rules;
  std::string list;
  GivenChoices choices;
  bool from_elsewhere = false;
  bool dry_run = false;
  ExportOptions columns;
  bool all = false;
  bool json = false;
  bool yes = false;
  bool quiet = false;
  bool color = true;
  bool help = false;
  bool version = false;
};

struct CommandLine {
  const CommandRow* command = nullptr;      ///< null when only help or the version is asked for
  const MethodWord* help_method = nullptr;  ///< with `options.help`: the method that help is wanted on
  Options options;
  std::string_view help_group;        ///< with `options.help`: the first word of the commands that it is wanted on
  std::string file;                   ///< FILE, of the commands that need one
  std::vector<std::string> operands;  ///< PATHs, [FILE], LOG, KEYs or topic, byte for byte as given
  std::vector<MethodCall> methods;
};

/// Reads the words behind the program's name. Looks at the disk only to tell a PATH behind "--" from a method. Throws
/// UsageError.
CommandLine parse_arguments(std::span<const char* const> words);

}  // namespace brindle
