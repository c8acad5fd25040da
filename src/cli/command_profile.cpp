#include <fmt/format.h>

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/commands.h"
#include "cli/json_lines.h"
#include "cli/rename_batch.h"
#include "cli/settings_files.h"
#include "platform/file_name.h"
#include "platform/translation.h"
#include "settings/profile_file.h"
#include "settings/setting_text.h"

namespace brindle {
namespace {

struct ShownSetting {
  std::string_view key;
  std::string_view type;
  std::string value;
  bool is_default = false;
};

std::string version_of(const PropertyValue& value) {
  const auto* text = value.get_if<std::u16string>();
  return text == nullptr ? std::string() : to_utf8(*text);
}

void add_choices(const RunChoices& choices, std::vector<ShownSetting>& shown) {
  const RunChoices usual;
  if (choices.on_problem != usual.on_problem)
    shown.push_back({"onProblem", "text", std::string(on_problem_words[static_cast<std::size_t>(choices.on_problem)])});
  if (choices.number_pattern != usual.number_pattern)
    shown.push_back({"numberPattern", "text", to_utf8(choices.number_pattern)});
  if (choices.permute) shown.push_back({"permute", "boolean", "true"});
}

// The keys that a record holds, in the order of the settings. Its version and its date are kept from settings that are
// in use, so they are read here.
std::vector<ShownSetting> settings_of(const SettingsRecord& record) {
  RenameSettings settings;
  loadEmptyProfile(settings, current_time());
  const RenameSettings defaults = settings;
  start_from_profile(settings, record);
  std::vector<ShownSetting> shown;
  for (const SettingRow& row : settings_table()) {
    const PropertyValue* value = record.find(decode_file_name(row.key));
    if (value == nullptr) continue;
    if (const auto* date = value->get_if<Date>(); date != nullptr) settings.dateTimeCustomDate = *date;
    const bool is_version = row.key == "appVersion";
    std::string text = is_version ? version_of(*value) : text_of_setting(settings, row);
    const bool is_default = !is_version && row.key != "selectedTab" && text == text_of_setting(defaults, row);
    shown.push_back({row.key, type_name(row), std::move(text), is_default});
  }
  add_choices(choices_in(record), shown);
  return shown;
}

void print_json(const ShownSetting& setting, std::string& buffer) {
  JsonLine(buffer).text("key", setting.key).text("type", setting.type).text("value", setting.value);
}

}  // namespace

ExitCode run_profile_save(const CommandLine& line, Console& console) {
  if (line.methods.size() > 1) {
    throw UsageError(translated("a profile holds one method; brindle rules save keeps a chain of them"));
  }
  const auto request = make_request(line, current_time(), Demand::method_or_none);
  if (const auto* refusal = std::get_if<Refusal>(&request)) return report_refusal(line, console, *refusal);
  note_date_left_out(std::get<RenameRequest>(request).date_left_out, console);
  if (!may_write(line, console)) return ExitCode::done;
  SettingsRecord record = getCurrentSettings(std::get<RenameRequest>(request).settings);
  put_choices(record, std::get<RenameRequest>(request).choices);
  if (const Status status = write_profile_file(line.file, record); !status.ok()) throw UsageError(status.reason());
  if (line.options.json) {
    JsonLine(console.out().buffer(), "summary").text("command", line.command->word).bytes("file", line.file);
  }
  note_extension(line.file, profile_extension, console);
  return ExitCode::done;
}

ExitCode run_profile_show(const CommandLine& line, Console& console) {
  const bool all = line.options.all || line.options.json || !console.out_is_terminal();
  std::size_t left_out = 0;
  for (const ShownSetting& setting : settings_of(read_profile(line.file))) {
    if (setting.is_default && !all) {
      ++left_out;
    } else if (line.options.json) {
      print_json(setting, console.out().buffer());
    } else {
      console.out() << fmt::format("{}{}{}={}\n", console.style().heading, setting.key, console.style().plain,
                                   console.shown(setting.value));
    }
  }
  if (left_out > 0) console.note(translated("{} more are as brindle starts with; --all shows them.", left_out));
  return ExitCode::done;
}

}  // namespace brindle
