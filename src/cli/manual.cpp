
#include <fmt/format.h>

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include "cli/command_table.h"
#include "cli/help.h"
#include "cli/method_words.h"
#include "platform/app_info.h"

namespace brindle {
namespace {

// Text as man takes it: no macro at the start of a line, hyphens that can be copied.
std::string escaped(std::string_view text) {
  std::string result = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
  for (const char c : text) {
    switch (c) {
      case '\\':
        result += "\\e";
        break;
      case '-':
        result += "\\-";
        break;
      case '\'':
        result += "\\(aq";
        break;
      case '^':
        result += "\\(ha";
        break;
      case '~':
        result += "\\(ti";
        break;
      default:
        result += c;
    }
  }
  return result;
}

class ManualWriter {
 public:
  void raw(std::string_view text) { text_ += text; }
  void section(std::string_view name) { text_ += fmt::format(".SH {}\n", name); }
  void subsection(std::string_view name) { text_ += fmt::format(".SS {}\n", escaped(name)); }
  void line(std::string_view text) { text_ += escaped(text) + "\n"; }
  void term(std::string_view bold, std::string_view plain, std::string_view meaning) {
    text_ += fmt::format(".TP\n\\fB{}\\fR", escaped(bold));
    if (!plain.empty()) text_ += fmt::format(" \\fI{}\\fR", escaped(plain));
    text_ += "\n" + escaped(meaning) + "\n";
  }
  void paragraphs(std::string_view text);
  void examples(std::span<const Example> examples, std::string_view before);
  std::string text() && { return std::move(text_); }

 private:
  std::string text_;
};

void ManualWriter::paragraphs(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find("\n\n"), text.size());
    text_ += ".PP\n" + escaped(text.substr(0, end)) + "\n";
    text.remove_prefix(std::min(end + 2, text.size()));
  }
}

void ManualWriter::examples(std::span<const Example> examples, std::string_view before) {
  if (examples.empty()) return;
  text_ += ".PP\n.nf\n";
  for (const Example& example : examples)
    text_ += fmt::format("    {}\n", escaped(std::string(before).append(example.words)));
  text_ += ".fi\n";
}

void write_command(ManualWriter& manual, const CommandRow& command) {
  manual.subsection(fmt::format("brindle {} {}", command.word, command.synopsis));
  manual.line(sentence(command.summary));
  if (command.about != find_command("rename")->about) manual.paragraphs(command.about);
  manual.examples(command.examples, "brindle ");
}

void write_method(ManualWriter& manual, const MethodWord& method) {
  std::string heading(method.word);
  for (const MethodOperand& operand : method.operands) heading += fmt::format(" {}", operand.name);
  manual.subsection(heading);
  manual.line(sentence(method.summary));
  for (const MethodOperand& operand : method.operands) manual.term(operand.name, "", operand.help);
  for (const MethodOption& option : method.options)
    manual.term(fmt::format("--{}", option.name), option.value, option.help);
  manual.paragraphs(method.about);
  manual.examples(method.examples, "brindle preview PATH... ");
}

void write_options(ManualWriter& manual) {
  for (const OptionRow& option : option_table()) {
    const std::string letter = option.letter == 0 ? "" : fmt::format("-{}, ", option.letter);
    std::string commands;
    for (const CommandRow& command : command_table()) {
      if (find_option(command, option.name) == &option)
        commands += fmt::format("{}{}", commands.empty() ? "" : ", ", command.word);
    }
    const std::string where = commands.empty() ? "without a command" : commands;
    manual.term(fmt::format("{}--{}", letter, option.name), option.value, fmt::format("{} ({})", option.help, where));
  }
}

constexpr std::string_view files_text =
    ".TP\n\\fI$XDG_DATA_HOME/Tessalon/Brindle4/Logs\\fR\nThe logs; ~/.local/share when XDG_DATA_HOME is not set.\n";
constexpr std::string_view exit_text =
    ".TP\n0\nEverything asked for was done.\n.TP\n1\nIt ran, and some items could not be renamed or restored.\n"
    ".TP\n2\nWrong words, or input that cannot be read.\n.TP\n3\nThe method lacks a text; nothing ran.\n"
    ".TP\n130\nCancelled with Ctrl\\-C between two items; the log is saved.\n";

}  // namespace

std::string manual_page() {
  ManualWriter manual;
  manual.raw(fmt::format(".TH BRINDLE 1 \"\" \"Brindle {}\" \"User Commands\"\n", appVersion()));
  manual.section("NAME");
  manual.raw("brindle \\- rename files and folders in batches, with preview, log and undo\n");
  manual.section("SYNOPSIS");
  for (const CommandRow& command : command_table()) {
    manual.raw(fmt::format("\\fBbrindle {}\\fR {}\n.br\n", command.word, escaped(command.synopsis)));
  }
  manual.section("DESCRIPTION");
  manual.raw(
      "Shows the new names first, never replaces a file, and keeps a log of every renaming from which it can be "
      "undone.\n");
  manual.paragraphs(find_command("rename")->about);
  manual.section("COMMANDS");
  for (const CommandRow& command : command_table()) write_command(manual, command);
  manual.section("OPTIONS");
  write_options(manual);
  manual.section("METHODS");
  for (const MethodWord& method : method_words()) write_method(manual, method);
  manual.section("\"EXIT STATUS\"");
  manual.raw(exit_text);
  manual.section("FILES");
  manual.raw(files_text);
  return std::move(manual).text();
}

}  // namespace brindle
