#pragma once

// The commands of `brindle`, as data. Constant; any thread.

#include <cstdint>
#include <span>
#include <string_view>

#include "cli/exit_code.h"
#include "cli/option.h"

namespace brindle {

class Console;
struct CommandLine;

/// What stands behind a command's word besides options.
enum class Operands : std::uint8_t {
  none,
  paths_and_methods,  ///< PATH... [METHOD [then METHOD]...]
  log,                ///< [LOG]
  file,               ///< [FILE]
  keys,               ///< [KEY...]
  topic,              ///< [COMMAND or METHOD]
};

struct CommandRow {
  std::string_view word;
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

/// The row of a command's word, or null.
const CommandRow* find_command(std::string_view word);
const OptionRow& option_row(OptionId id);
/// The option of this name, or with this letter, that a command takes, or null.
const OptionRow* find_option(const CommandRow& command, std::string_view name);
const OptionRow* find_letter(const CommandRow& command, char letter);

}  // namespace brindle
