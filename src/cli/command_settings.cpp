#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "cli/commands.h"
#include "cli/json_lines.h"
#include "cli/method_words.h"
#include "cli/terminal_text.h"
#include "platform/translation.h"
#include "settings/setting_text.h"
#include "settings/settings_table.h"

namespace brindle {
namespace {

void check_keys(const std::vector<std::string>& keys) {
  std::vector<std::string_view> known;
  for (const SettingRow& row : settings_table()) known.push_back(row.key);
  for (const std::string& key : keys) {
    if (find_setting(key) != nullptr) continue;
    const std::string_view closest = closest_word(key, known);
    const std::string advice = closest.empty() ? "" : translated("; did you mean {}?", closest);
    throw UsageError(translated("there is no key {}{} (brindle settings lists them)", key, advice));
  }
}

bool is_wanted(const SettingDescription& setting, const std::vector<std::string>& keys) {
  return keys.empty() || std::ranges::find(keys, setting.key) != keys.end();
}

void print_json(const SettingDescription& setting, std::string& buffer) {
  JsonLine(buffer)
      .text("key", setting.key)
      .text("type", setting.type)
      .text("default", setting.default_text)
      .text("meaning", setting.meaning);
}

// One line for programs that look for lines, two for people.
void print_row(const SettingDescription& setting, Console& console) {
  if (!console.out_is_terminal()) {
    console.out() << fmt::format("{}\t{}\t{}\t{}\n", setting.key, setting.type, setting.default_text, setting.meaning);
    return;
  }
  const std::string value = setting.default_text.empty() ? "" : translated(", default {}", setting.default_text);
  const Style& style = console.style();
  console.out() << fmt::format("{}{}{}  {}{}{}{}\n    ", style.heading, setting.key, style.plain, style.faint,
                               setting.type, value, style.plain);
  append_wrapped(translated(setting.meaning), 4, console.width(), console.out().buffer());
}

}  // namespace

ExitCode run_settings(const CommandLine& line, Console& console) {
  check_keys(line.operands);
  for (const SettingDescription& setting : describe_settings()) {
    if (!is_wanted(setting, line.operands)) continue;
    if (line.options.json) {
      print_json(setting, console.out().buffer());
    } else {
      print_row(setting, console);
    }
  }
  return ExitCode::done;
}

}  // namespace brindle
