#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "cli/command_table.h"
#include "cli/help.h"
#include "cli/method_words.h"

namespace brindle {
namespace {

std::string_view first_word(std::string_view word) {
  return word.substr(0, word.find(' '));
}

// Of a command of two words "profile save", the second; "" for one word.
std::string_view second_word(std::string_view word) {
  return word.substr(std::min(first_word(word).size() + 1, word.size()));
}

// The first words of the commands, each once.
std::string command_words() {
  std::string words;
  std::string_view last;
  for (const CommandRow& row : command_table()) {
    if (first_word(row.word) != last) words += fmt::format("{} ", first_word(row.word));
    last = first_word(row.word);
  }
  return words;
}

// The second words of the commands that have one, by their first: arms of a shell's case.
std::string second_word_arms() {
  std::string arms;
  std::string_view last;
  for (const CommandRow& row : command_table()) {
    if (second_word(row.word).empty()) continue;
    const bool goes_on = first_word(row.word) == last;
    arms += goes_on ? fmt::format(" {}", second_word(row.word))
                    : fmt::format("{}    {}) seconds='{}", arms.empty() ? "" : "' ;;\n", first_word(row.word),
                                  second_word(row.word));
    last = first_word(row.word);
  }
  return arms + "' ;;\n";
}

std::string method_word_list() {
  std::string words;
  for (const MethodWord& row : method_words()) words += fmt::format("{} ", row.word);
  return words;
}

std::string options_of(const CommandRow& command) {
  std::string words;
  for (const OptionId id : command.options) words += fmt::format("--{} ", option_row(id).name);
  return words;
}

std::string options_of(const MethodWord& method) {
  std::string words;
  for (const MethodOption& option : method.options) words += fmt::format("--{} ", option.name);
  return words;
}

bool is_choice(std::string_view value) {
  return value.find('|') != std::string_view::npos;
}

std::string choices_of(std::string_view value) {
  std::string words(value);
  std::ranges::replace(words, '|', ' ');
  return words;
}

// What follows an option, by "METHOD --option"; the commands' options count behind every method and without one.
std::string choice_arms() {
  std::string arms;
  const auto add = [&](std::string_view method, std::string_view option, std::string_view value) {
    if (is_choice(value)) arms += fmt::format("    {}\" --{}\") choices='{}' ;;\n", method, option, choices_of(value));
  };
  for (const MethodWord& method : method_words()) {
    for (const MethodOption& option : method.options) add(method.word, option.name, option.value);
  }
  for (const OptionRow& option : option_table()) add("*", option.name, option.value);
  return arms;
}

constexpr std::string_view bash_start = R"(_brindle() {
  local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}
  local method= options= choices= seconds= takes_methods= i
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    COMPREPLY=($(compgen -W "$_brindle_commands --help --version" -- "$current"))
    return
  fi
  case $command in
)";

// Behind the arms of second words.
constexpr std::string_view bash_middle = R"(  esac
  if [ -n "$seconds" ]; then
    if [ "$COMP_CWORD" -eq 2 ]; then
      COMPREPLY=($(compgen -W "$seconds" -- "$current"))
      return
    fi
    command="$command ${COMP_WORDS[2]}"
  fi
  for ((i = 2; i < COMP_CWORD; ++i)); do
    if [ -z "$method" ] || [ "${COMP_WORDS[i-1]}" = then ]; then
      case " $_brindle_methods" in *" ${COMP_WORDS[i]} "*) method=${COMP_WORDS[i]} ;; esac
    fi
  done
)";

constexpr std::string_view bash_end = R"(  if [ -n "$choices" ]; then
    COMPREPLY=($(compgen -W "$choices" -- "$current"))
  elif [ "$before" = then ]; then
    COMPREPLY=($(compgen -W "$_brindle_methods" -- "$current"))
  elif [ "${current#-}" != "$current" ]; then
    COMPREPLY=($(compgen -W "$options" -- "$current"))
  elif [ "$command" = help ]; then
    COMPREPLY=($(compgen -W "$_brindle_commands $_brindle_methods" -- "$current"))
  elif [ -n "$method" ]; then
    COMPREPLY=($(compgen -W then -- "$current"))
  elif [ -n "$takes_methods" ]; then
    COMPREPLY=($(compgen -W "$_brindle_methods" -- "$current"))
    local IFS=$'\n'
    COMPREPLY+=($(compgen -f -- "$current"))
  fi
}
complete -o default -o filenames -F _brindle brindle
)";

// A text within '…' of fish.
std::string fish_quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

std::string fish_option(std::string_view condition, std::string_view name, std::string_view value,
                        std::string_view help) {
  std::string line = fmt::format("complete -c brindle -n '{}' -l {} -d {}", condition, name, fish_quoted(help));
  if (is_choice(value)) return line + fmt::format(" -x -a '{}'\n", choices_of(value));
  return line + (value.empty() ? "\n" : value == "FILE" ? " -r\n" : " -x\n");
}

// Under which words on the line an option of a command is offered.
std::string fish_condition(std::string_view command) {
  std::string condition = fmt::format("__fish_seen_subcommand_from {}", first_word(command));
  if (!second_word(command).empty()) {
    condition += fmt::format("; and __fish_seen_subcommand_from {}", second_word(command));
  }
  return condition;
}

// A command's words: the first behind brindle, the second behind the first.
std::string fish_command(const CommandRow& command) {
  const std::string help = fish_quoted(command.summary);
  const std::string_view first = first_word(command.word);
  const std::string_view second = second_word(command.word);
  if (second.empty()) return fmt::format("complete -c brindle -n __fish_use_subcommand -f -a {} -d {}\n", first, help);
  return fmt::format(
      "complete -c brindle -n __fish_use_subcommand -f -a {0}\n"
      "complete -c brindle -n '__fish_seen_subcommand_from {0}' -f -a {1} -d {2}\n",
      first, second, help);
}

}  // namespace

std::string bash_completion() {
  std::string script =
      fmt::format("_brindle_commands='{}'\n_brindle_methods='{}'\n", command_words(), method_word_list());
  script.append(bash_start).append(second_word_arms()).append(bash_middle);
  script += "  case $command in\n";
  for (const CommandRow& command : command_table()) {
    script += fmt::format("    '{}') options='{}'{} ;;\n", command.word, options_of(command),
                          takes_methods(command.operands) ? " takes_methods=1" : "");
  }
  script += "  esac\n  case $method in\n";
  for (const MethodWord& method : method_words()) {
    script += fmt::format("    {}) options=\"{}$options\" ;;\n", method.word, options_of(method));
  }
  script += fmt::format("  esac\n  case \"$method $before\" in\n{}  esac\n", choice_arms());
  return script.append(bash_end);
}

std::string zsh_completion() {
  return "#compdef brindle\nautoload -U +X bashcompinit && bashcompinit\n" + bash_completion();
}

std::string fish_completion() {
  std::string script;
  std::string commands_with_methods = "help";
  for (const CommandRow& command : command_table()) {
    script += fish_command(command);
    const std::string condition = fish_condition(command.word);
    for (const OptionId id : command.options) {
      const OptionRow& option = option_row(id);
      script += fish_option(condition, option.name, option.value, option.help);
    }
    if (takes_methods(command.operands)) commands_with_methods += fmt::format(" {}", first_word(command.word));
  }
  for (const MethodWord& method : method_words()) {
    script += fmt::format("complete -c brindle -n '__fish_seen_subcommand_from {}' -a {} -d {}\n",
                          commands_with_methods, method.word, fish_quoted(method.summary));
    const std::string condition = fmt::format("__fish_seen_subcommand_from {}", method.word);
    for (const MethodOption& option : method.options) {
      script += fish_option(condition, option.name, option.value, option.help);
    }
  }
  return script;
}

}  // namespace brindle
