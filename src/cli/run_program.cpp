#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <span>
#include <string>
#include <string_view>

#include "cli/commands.h"
#include "cli/help.h"
#include "platform/app_info.h"
#include "platform/cancellation.h"
#include "platform/message_log.h"
#include "platform/translation.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

// Texts for the installed program, by the word behind "help".
struct PackagedText {
  std::string_view word;
  std::string (*text)();
};
constexpr auto packaged_texts = std::to_array<PackagedText>({
    {"man-page", manual_page},
    {"bash-completion", bash_completion},
    {"zsh-completion", zsh_completion},
    {"fish-completion", fish_completion},
});

ExitCode show_help(const CommandLine& line, Console& console) {
  const Style& style = console.style();
  if (line.help_method != nullptr) {
    console.out() << method_help(*line.help_method, style, console.width());
  } else if (!line.help_group.empty()) {
    console.out() << group_help(line.help_group, style, console.width());
  } else if (line.command != nullptr) {
    console.out() << command_help(*line.command, style, console.width());
  } else {
    console.out() << program_help(style, console.width());
  }
  return ExitCode::done;
}

ExitCode run_line(const CommandLine& line, Console& console) {
  if (line.options.version) {
    console.out() << "brindle " << appVersion() << "\n";
    return ExitCode::done;
  }
  console.set_color(line.options.color);
  console.set_quiet(line.options.quiet);
  if (line.options.quiet) hush_remarks();
  if (line.options.help) return show_help(line, console);
  return line.command->run(line, console);
}

// What could not be written is no success.
ExitCode finish(ExitCode code, Console& console) {
  console.out().flush();
  if (console.out().error() == 0) return code;
  console.error(translated("cannot write the output: {}", translated(std::strerror(console.out().error()))));
  return code == ExitCode::done ? ExitCode::incomplete : code;
}

}  // namespace

ExitCode run_help(const CommandLine& line, Console& console) {
  CommandLine topic;
  if (!line.operands.empty()) {
    const std::string word = fmt::format("{}", fmt::join(line.operands, " "));
    const auto packaged = std::ranges::find(packaged_texts, word, &PackagedText::word);
    if (packaged != packaged_texts.end()) {
      console.out() << packaged->text();
      return ExitCode::done;
    }
    topic.command = find_command(word);
    if (begins_commands(word)) topic.help_group = word;
    if (!topic.help_group.empty()) return show_help(topic, console);
    topic.help_method = topic.command == nullptr ? find_method(word) : nullptr;
    if (topic.command == nullptr && topic.help_method == nullptr) {
      throw UsageError(translated("there is no command or method {} (brindle --help lists them)", word));
    }
  }
  return show_help(topic, console);
}

namespace {

ExitCode run_words(std::span<const char* const> words, Console& console) {
  try {
    return finish(run_line(parse_arguments(words), console), console);
  } catch (const UsageError& error) {
    console.error(error.what());
    return ExitCode::usage;
  } catch (const std::exception& error) {
    console.error(translated("this should not have happened: {}", error.what()));
    return ExitCode::incomplete;
  }
}

}  // namespace

ExitCode run_program(int count, const char* const* words) {
  catch_signals();
  set_language(language_of_environment());
  Console console;
  const ExitCode code = run_words(std::span(words, static_cast<std::size_t>(count)), console);
  report_repeated();
  return code;
}

}  // namespace brindle
