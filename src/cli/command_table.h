#pragma once

// The commands of `brindle`, as data: constant tables from which parsing, help and completions all follow. Any thread.

#include <cstdint>
#include <span>
#include <string_view>

#include "cli/exit_code.h"
#include "cli/method_words.h"

namespace brindle {

class Console;
struct CommandLine;

/// What stands behind a command's word besides options.
enum class Operands : std::uint8_t {
  none,
  paths_and_methods,       ///< PATH... [METHOD [then METHOD]...]
  file_paths_and_methods,  ///< FILE PATH... [METHOD [then METHOD]...]
  file_and_methods,        ///< FILE [METHOD [then METHOD]...]
  file,                    ///< FILE
  optional_file,           ///< [FILE]
  log,                     ///< [LOG]
  keys,                    ///< [KEY...]
  topic,                   ///< [COMMAND or METHOD]
};

constexpr bool takes_file(Operands operands) {
  return operands == Operands::file_paths_and_methods || operands == Operands::file_and_methods ||
         operands == Operands::file;
}
constexpr bool takes_paths(Operands operands) {
  return operands == Operands::paths_and_methods || operands == Operands::file_paths_and_methods;
}
constexpr bool takes_methods(Operands operands) {
  return takes_paths(operands) || operands == Operands::file_and_methods;
}

/// What an option means to the program.
enum class OptionId : std::uint8_t {
  files,
  folders,
  subfolders,
  no_subfolders,
  hidden,
  no_preserve_root,
  sort,
  from,
  nul,
  set,
  profile,
  rules,
  list,
  on_problem,
  number_pattern,
  permute,
  from_elsewhere,
  dry_run,
  no_name,
  no_new_name,
  no_location,
  full_paths,
  no_header,
  all,
  json,
  yes,
  quiet,
  no_color,
  help,
  version,
};

struct OptionRow {
  OptionId id;
  std::string_view name;   ///< without the dashes
  char letter;             ///< the short form, 0 for none
  std::string_view value;  ///< how help calls its value; empty when it takes none. "a|b|c" is a choice
  std::string_view help;
};

struct CommandRow {
  std::string_view word;      ///< or two words: "profile save"
  std::string_view synopsis;  ///< behind the word
  std::string_view summary;   ///< half a line
  std::string_view about;     ///< paragraphs; may be empty
  Operands operands;
  std::span<const OptionId> options;
  ExitCode (*run)(const CommandLine& line, Console& console);
  std::span<const Example> examples;
};

std::span<const CommandRow> command_table();
std::span<const OptionRow> option_table();

/// The row of a command's word, or of its two words with a blank between them; or null.
const CommandRow* find_command(std::string_view word);
/// Whether the word is the first of a command's two.
bool begins_commands(std::string_view word);
const OptionRow& option_row(OptionId id);
/// The option of this name, or with this letter, that a command takes, or null.
const OptionRow* find_option(const CommandRow& command, std::string_view name);
const OptionRow* find_letter(const CommandRow& command, char letter);

}  // namespace brindle
