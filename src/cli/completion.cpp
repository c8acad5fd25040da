#include "cli/completion.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "cli/command_table.h"
#include "cli/method_table.h"

namespace brindle {
namespace {

template <class Rows>
std::string words_of(const Rows& rows) {
  std::string words;
  for (const auto& row : rows) words += fmt::format("{} ", row.word);
  return words;
}

std::string options_of(const CommandRow& command) {
  std::string words;
  for (const OptionId id : command.options) words += fmt::format("--{} ", option_row(id).name);
  return words;
}

std::string options_of(const MethodRow& method) {
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
  for (const MethodRow& method : method_table()) {
    for (const MethodOption& option : method.options) add(method.word, option.name, option.value);
  }
  for (const OptionRow& option : option_table()) add("*", option.name, option.value);
  return arms;
}

constexpr std::string_view bash_start = R"(_brindle() {
  local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}
  local method= options= choices= i
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    COMPREPLY=($(compgen -W "$_brindle_commands --help --version" -- "$current"))
    return
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
  elif [ "$command" = preview ] || [ "$command" = rename ]; then
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

}  // namespace

std::string bash_completion() {
  std::string script = fmt::format("_brindle_commands='{}'\n_brindle_methods='{}'\n", words_of(command_table()),
                                   words_of(method_table()));
  script += bash_start;
  script += "  case $command in\n";
  for (const CommandRow& command : command_table()) {
    script += fmt::format("    {}) options='{}' ;;\n", command.word, options_of(command));
  }
  script += "  esac\n  case $method in\n";
  for (const MethodRow& method : method_table()) {
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
  for (const CommandRow& command : command_table()) {
    script += fmt::format("complete -c brindle -n __fish_use_subcommand -f -a {} -d {}\n", command.word,
                          fish_quoted(command.summary));
    const std::string condition = fmt::format("__fish_seen_subcommand_from {}", command.word);
    for (const OptionId id : command.options) {
      const OptionRow& option = option_row(id);
      script += fish_option(condition, option.name, option.value, option.help);
    }
  }
  for (const MethodRow& method : method_table()) {
    script += fmt::format("complete -c brindle -n '__fish_seen_subcommand_from preview rename help' -a {} -d {}\n",
                          method.word, fish_quoted(method.summary));
    const std::string condition = fmt::format("__fish_seen_subcommand_from {}", method.word);
    for (const MethodOption& option : method.options) {
      script += fish_option(condition, option.name, option.value, option.help);
    }
  }
  return script;
}

}  // namespace brindle
