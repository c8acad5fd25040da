#include "cli/help.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "cli/terminal_text.h"
#include "platform/translation.h"

namespace brindle {
namespace {

/// Two columns, the left one as wide as it must be and no wider than makes sense.
struct Row {
  std::string left;
  std::string right;
};

class HelpWriter {
 public:
  HelpWriter(const Style& style, std::size_t width) : style_(style), width_(std::clamp<std::size_t>(width, 40, 100)) {}

  void heading(std::string_view text) { text_ += fmt::format("\n{}{}{}\n", style_.heading, text, style_.plain); }
  void line(std::string_view text) { text_ += fmt::format("  {}\n", text); }
  void paragraphs(std::string_view text);
  void rows(const std::vector<Row>& rows);
  void plain(std::string_view text) { text_ += text; }
  std::string text() && { return std::move(text_); }

 private:
  const Style& style_;
  std::size_t width_;
  std::string text_;
};

void HelpWriter::paragraphs(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find("\n\n"), text.size());
    text_ += '\n';
    append_wrapped(text.substr(0, end), 0, width_, text_);
    text.remove_prefix(std::min(end + 2, text.size()));
  }
}

void HelpWriter::rows(const std::vector<Row>& rows) {
  std::size_t column = 0;
  for (const Row& row : rows) column = std::max(column, display_width(row.left) + 4);
  column = std::min(column, std::size_t{30});
  for (const Row& row : rows) {
    text_ += fmt::format("  {}", row.left);
    const std::size_t at = display_width(row.left) + 2;
    if (at + 2 > column) {
      text_ += fmt::format("\n{:{}}", "", column);
    } else {
      text_ += fmt::format("{:{}}", "", column - at);
    }
    append_wrapped(row.right, column, width_, text_);
  }
}

std::string option_text(char letter, std::string_view name, std::string_view value) {
  const std::string short_form = letter == 0 ? "" : fmt::format("-{}, ", letter);
  return fmt::format("{}--{}{}{}", short_form, name, value.empty() ? "" : " ", value);
}

std::vector<Row> method_rows() {
  std::vector<Row> rows;
  for (const MethodWord& method : method_words())
    rows.push_back({std::string(method.word), translated(method.summary)});
  return rows;
}

std::vector<Row> option_rows(const CommandRow& command) {
  std::vector<Row> rows;
  for (const OptionId id : command.options) {
    const OptionRow& row = option_row(id);
    rows.push_back({option_text(row.letter, row.name, row.value), translated(row.help)});
  }
  return rows;
}

std::string method_usage(const MethodWord& method) {
  std::string usage(method.word);
  const bool replaced = std::ranges::any_of(method.options, &MethodOption::replaces_operands);
  for (const MethodOperand& operand : method.operands) {
    usage += replaced ? fmt::format(" [{}]", operand.name) : fmt::format(" {}", operand.name);
  }
  if (!method.options.empty()) usage += method.required_group != 0 ? " OPTION..." : " [OPTION]...";
  return usage;
}

void examples(HelpWriter& writer, std::span<const Example> examples, std::string_view before_words) {
  if (examples.empty()) return;
  writer.heading(translated("Examples"));
  std::vector<Row> rows;
  for (const Example& example : examples) {
    writer.line(fmt::format("{}{}", before_words, example.words));
    if (!example.before.empty()) writer.line(fmt::format("    {} → {}", example.before, example.after));
  }
}

constexpr std::string_view introduction = to_translate(
    "Renames files and folders in batches: shows the new names first, never replaces a file, and keeps a log of every "
    "renaming from which it can be undone.");

}  // namespace

std::string sentence(std::string_view summary) {
  const char first = summary.front();
  const bool is_small = first >= 'a' && first <= 'z';
  return fmt::format("{}{}.", is_small ? static_cast<char>(first - 'a' + 'A') : first, summary.substr(1));
}

std::string program_help(const Style& style, std::size_t width) {
  HelpWriter writer(style, width);
  writer.plain(translated("usage: brindle {}\n", "COMMAND [OPTION]... [PATH]... [METHOD [then METHOD]...]"));
  writer.paragraphs(translated(introduction));
  writer.heading(translated("Commands"));
  std::vector<Row> commands;
  for (const CommandRow& row : command_table()) commands.push_back({std::string(row.word), translated(row.summary)});
  writer.rows(commands);
  writer.heading(translated("Methods"));
  writer.rows(method_rows());
  constexpr auto first_steps = std::to_array<Example>({
      {"preview Photos insert 'Brest - '", "", ""},
      {"rename Photos insert 'Brest - '", "", ""},
      {"undo", "", ""},
      {"preview --sort name . number --start 1 --mask 000 --prefix --separator ' '", "", ""},
  });
  examples(writer, first_steps, "brindle ");
  writer.paragraphs(translated(
      "brindle help COMMAND and brindle help METHOD tell more, with examples. brindle --version shows the version.\n\n"
      "Exit codes: 0 done, 1 some items could not be renamed or restored, 2 wrong words or unreadable input, 3 the "
      "method "
      "lacks a text, 130 cancelled with Ctrl-C."));
  return std::move(writer).text();
}

std::string group_help(std::string_view first_word, const Style& style, std::size_t width) {
  HelpWriter writer(style, width);
  std::vector<Row> rows;
  for (const CommandRow& row : command_table()) {
    if (!row.word.starts_with(fmt::format("{} ", first_word))) continue;
    writer.plain(translated("usage: brindle {} {}\n", row.word, row.synopsis));
    rows.push_back({std::string(row.word), translated(row.summary)});
  }
  writer.plain("\n");
  writer.rows(rows);
  return std::move(writer).text();
}

std::string command_help(const CommandRow& command, const Style& style, std::size_t width) {
  HelpWriter writer(style, width);
  writer.plain(translated("usage: brindle {} {}\n", command.word, command.synopsis));
  writer.paragraphs(sentence(translated(command.summary)));
  writer.heading(translated("Options"));
  writer.rows(option_rows(command));
  if (takes_methods(command.operands)) {
    writer.heading(translated("Methods (brindle help METHOD tells more)"));
    writer.rows(method_rows());
  }
  examples(writer, command.examples, "brindle ");
  writer.paragraphs(translated(command.about));
  return std::move(writer).text();
}

std::string method_help(const MethodWord& method, const Style& style, std::size_t width) {
  HelpWriter writer(style, width);
  writer.plain(translated("usage: brindle preview PATH... {}\n", method_usage(method)));
  writer.paragraphs(sentence(translated(method.summary)));
  std::vector<Row> rows;
  for (const MethodOperand& operand : method.operands)
    rows.push_back({std::string(operand.name), translated(operand.help)});
  for (const MethodOption& option : method.options) {
    rows.push_back({option_text(0, option.name, option.value), translated(option.help)});
  }
  if (!rows.empty()) writer.plain("\n");
  writer.rows(rows);
  examples(writer, method.examples, "brindle preview PATH... ");
  writer.paragraphs(translated(method.about));
  return std::move(writer).text();
}

}  // namespace brindle
