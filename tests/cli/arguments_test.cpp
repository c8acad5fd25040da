#include "cli/arguments.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "cli/help.h"
#include "cli/words.h"
#include "platform/file_name.h"
#include "support/case_file.h"

namespace brindle {
namespace {

std::string told(const MethodCall& call) {
  std::string text(call.method->word);
  for (const OptionValue& operand : call.operands) text += fmt::format(" [{}]", to_utf8(operand.text));
  for (const auto& [option, value] : call.options) {
    text +=
        fmt::format(" --{}{}", option->name, option->value.empty() ? "" : fmt::format("=[{}]", to_utf8(value.text)));
  }
  return text;
}

std::string told(const Options& options) {
  std::string text;
  const auto tell = [&](bool given, std::string_view name) { text += given ? fmt::format(" {}", name) : ""; };
  tell(options.folders == true, "folders");
  tell(options.folders == false, "files");
  tell(options.subfolders == false, "no-subfolders");
  tell(options.hidden, "hidden");
  tell(options.sort == ListOrder::name, "by-name");
  tell(options.sort == ListOrder::folder, "by-folder");
  for (const std::string& name : options.from) text += fmt::format(" from=[{}]", name);
  for (const std::string& assignment : options.set) text += fmt::format(" set=[{}]", assignment);
  tell(options.nul, "nul");
  tell(options.all, "all");
  tell(options.json, "json");
  tell(options.yes, "yes");
  tell(options.quiet, "quiet");
  tell(!options.color, "no-color");
  tell(options.help, "help");
  tell(options.version, "version");
  return text;
}

std::string outcome_of(const std::string& line) {
  try {
    const CommandLine read = parse_line(line);
    std::string text(read.command == nullptr ? "-" : read.command->word);
    text += told(read.options);
    if (read.options.help && read.help_method != nullptr) text += fmt::format(" on {}", read.help_method->word);
    for (const std::string& operand : read.operands) text += fmt::format(" [{}]", operand);
    for (const MethodCall& call : read.methods) text += fmt::format(" | {}", told(call));
    return text;
  } catch (const UsageError& error) {
    return fmt::format("! {}", error.what());
  }
}

TEST(Arguments, FollowTheirTable) {
  for (const CaseColumns& c : read_cases("cli_arguments.tsv", 2)) EXPECT_EQ(outcome_of(c[0]), c[1]) << c[0];
}

// What a shell hands over is handed on, whatever it holds.
TEST(Arguments, LeavePathsAlone) {
  const char* const words[] = {"preview", "a\nb", "\xff", "[a,b]", "-", "a=b", "--", "--x", "-y", "reverse"};
  const std::vector<std::string> paths(words + 1, words + 6);
  std::vector<std::string> expected = paths;
  expected.insert(expected.end(), {"--x", "-y"});
  EXPECT_EQ(parse_arguments(words).operands, expected);
}

std::size_t longest_line(const std::string& text) {
  std::size_t longest = 0;
  for (const std::string& line : split(text, '\n')) longest = std::max(longest, line.size());
  return longest;
}

// Usage and example lines are to be copied, so they are not broken; everything else fits.
TEST(Help, NamesEveryOptionAndFitsTheTerminal) {
  for (const CommandRow& command : command_table()) {
    const std::string text = command_help(command, {}, 80);
    for (const OptionId id : command.options) {
      EXPECT_NE(text.find(fmt::format("--{}", option_row(id).name)), std::string::npos) << command.word;
    }
    EXPECT_LE(longest_line(text), 84) << text;
    for (const Example& example : command.examples) {
      EXPECT_EQ(outcome_of(std::string(example.words)).front(), command.word.front()) << example.words;
    }
  }
  for (const MethodWord& method : method_words()) {
    const std::string text = method_help(method, {}, 80);
    EXPECT_FALSE(method.examples.empty()) << method.word;
    for (const MethodOption& option : method.options) {
      EXPECT_NE(text.find(fmt::format("--{}", option.name)), std::string::npos) << method.word;
    }
  }
}

}  // namespace
}  // namespace brindle
