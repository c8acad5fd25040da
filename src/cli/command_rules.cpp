#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/commands.h"
#include "cli/json_lines.h"
#include "cli/rename_batch.h"
#include "cli/settings_files.h"
#include "cli/terminal_text.h"
#include "methods/rule_file.h"
#include "platform/file_name.h"
#include "platform/translation.h"
#include "texts/rule_tree.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

// A value as it can be seen: in quotes where its end would be lost.
std::string visible(const std::string& value, const Console& console) {
  const bool fades = value.empty() || value.front() == ' ' || value.back() == ' ';
  return fades ? fmt::format("\"{}\"", console.shown(value)) : console.shown(value);
}

// Variant and method as the file has them: "Insert (InsertDelete)", or "General" where they are called alike.
std::string title_of(const Rule& rule, const Console& console) {
  const std::string type = console.shown(to_utf8(rule.type));
  return rule.type == rule.rule ? type : fmt::format("{} ({})", type, console.shown(to_utf8(rule.rule)));
}

void print_tree(const RuleNode& node, std::size_t number, Console& console) {
  const Style& style = console.style();
  console.out() << fmt::format("{}{}. {}{}", style.heading, number, title_of(*node.rule(), console), style.plain);
  if (!node.rule()->isActive) console.out() << style.problem << translated(", switched off") << style.plain;
  console.out() << '\n';
  std::size_t width = 0;
  for (const RuleNode& row : node.children()) width = std::max(width, display_width(row.option()));
  for (std::size_t i = 0; i < node.numberOfChildren(); ++i) {
    const RuleNode& row = node.childAtIndex(i);
    console.out() << fmt::format("   {}{}{} {}{:{}}  {}\n", style.faint, i + 1 < node.numberOfChildren() ? "├─" : "└─",
                                 style.plain, row.option(), "", width - display_width(row.option()),
                                 visible(row.value(), console));
  }
}

void print_json(const RuleNode& node, std::size_t number, std::string& buffer) {
  std::vector<JsonPair> rows;
  for (const RuleNode& row : node.children()) rows.push_back({row.option(), row.value()});
  JsonLine(buffer)
      .number("number", number)
      .text("rule", to_utf8(node.rule()->rule))
      .text("type", to_utf8(node.rule()->type))
      .flag("isActive", node.rule()->isActive)
      .pairs("rows", "option", "value", rows);
}

}  // namespace

ExitCode run_rules_save(const CommandLine& line, Console& console) {
  if (line.methods.empty()) {
    throw UsageError(translated("say which methods: brindle {} {}", line.command->word, line.command->synopsis));
  }
  const auto rules = make_rules(line, common_settings(line.options, current_time()).settings);
  if (const auto* refusal = std::get_if<Refusal>(&rules)) return report_refusal(line, console, *refusal);
  if (!may_write(line, console)) return ExitCode::done;
  const auto& chain = std::get<std::vector<Rule>>(rules);
  if (const Status status = write_rule_file(line.file, chain); !status.ok()) throw UsageError(status.reason());
  if (line.options.json) {
    JsonLine(console.out().buffer(), "summary")
        .text("command", line.command->word)
        .number("items", chain.size())
        .bytes("file", line.file);
  }
  note_extension(line.file, rule_extension, console);
  return ExitCode::done;
}

ExitCode run_rules_show(const CommandLine& line, Console& console) {
  const std::vector<Rule> rules = read_rules(line.file);
  if (line.options.json) set_language(languages().front());  // programs know the labels in one language
  std::size_t number = 0;
  for (const RuleNode& node : rule_nodes(rules)) {
    ++number;
    if (line.options.json) {
      print_json(node, number, console.out().buffer());
    } else {
      print_tree(node, number, console);
    }
  }
  if (rules.empty()) console.note(translated("{} holds no rules.", line.file));
  return ExitCode::done;
}

}  // namespace brindle
