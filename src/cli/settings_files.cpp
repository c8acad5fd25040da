#include "cli/settings_files.h"

#include <sys/stat.h>

#include <algorithm>
#include <optional>

#include "methods/rule_file.h"
#include "platform/ascii.h"
#include "platform/file_name.h"
#include "platform/path.h"
#include "platform/translation.h"
#include "plist/iso_date.h"
#include "settings/profile_file.h"

namespace brindle {

SettingsRecord read_profile(const std::string& file) {
  Result<SettingsRecord> record = read_profile_file(file);
  if (!record.ok()) throw UsageError(record.reason());
  return *std::move(record);
}

SettingsOutcome start_from_profile(RenameSettings& settings, const SettingsRecord& record) {
  return setSettings(settings, record);
}

void note_date_left_out(const std::optional<Date>& date, Console& console) {
  if (!date) return;
  const std::string text = iso_text(*date);
  console.note(
      translated("The profile's fixed date, {}, is not taken over: the date of this run stands in its place. "
                 "To keep it, add --set dateTimeCustomDate={}",
                 text, text));
}

void check_method(const SettingsRecord& record, const std::string& file) {
  RenameSettings settings;
  settings.selectedTab = -1;
  setSettings(settings, record);
  if (selected_method(settings)) return;
  throw UsageError(translated("{} does not say how to rename; write a method behind the PATHs", file));
}

std::vector<Rule> read_rules(const std::string& file) {
  Result<std::vector<Rule>> rules = read_rule_file(file, MethodNames::repaired);
  if (!rules.ok()) throw UsageError(rules.reason());
  return *std::move(rules);
}

void check_chain(const std::vector<Rule>& rules, const std::string& file) {
  if (rules.empty()) throw UsageError(translated("{} holds no rules", file));
  if (std::ranges::none_of(rules, &Rule::isActive)) {
    throw UsageError(translated("all rules of {} are switched off; switch them on in the window", file));
  }
  for (std::size_t i = 0; i < rules.size(); ++i) {
    if (!rules[i].isActive || variant_of(rules[i])) continue;
    throw UsageError(translated("rule {} of {} is of an unknown method, “{}”", i + 1, file, to_utf8(rules[i].rule)));
  }
}

bool may_write(const CommandLine& line, Console& console) {
  if (!entry_exists(line.file)) return true;
  struct stat facts {};
  if (::stat(line.file.c_str(), &facts) == 0 && !S_ISREG(facts.st_mode)) {
    throw UsageError(translated("{} is no file that could be replaced", line.file));
  }
  if (line.options.yes) return true;
  if (!console.in_is_terminal()) {
    throw UsageError(translated("{} is there already; --yes replaces it", line.file));
  }
  if (console.ask(translated("{} is there already. Replace it? [y/N]", console.shown(line.file)))) return true;
  console.note(translated("Nothing was written."));
  return false;
}

void note_extension(const std::string& file, std::string_view extension, Console& console) {
  const std::size_t dot = file.rfind('.');
  const std::string_view given = dot == std::string::npos ? "" : std::string_view(file).substr(dot + 1);
  if (equal_ignoring_case(given, extension)) return;
  console.note(translated("The window lists only files whose names end in .{}.", extension));
}

}  // namespace brindle
