#include "cli/rename_request.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "cli/method_rows.h"
#include "cli/method_words.h"
#include "cli/settings_files.h"
#include "platform/file_name.h"
#include "platform/path.h"
#include "platform/translation.h"
#include "settings/setting_text.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::string_view key_of(std::string_view assignment) {
  return assignment.substr(0, assignment.find('='));
}

void assign(RenameSettings& settings, const Options& options) {
  const std::vector<std::string_view> assignments(options.set.begin(), options.set.end());
  if (const auto fault = apply_assignments(settings, assignments, field_of_known_token)) {
    throw UsageError(fmt::format("--set: {}", *fault));
  }
}

// Whether a --set says how to rename, not only what.
bool chooses_method(const std::string& assignment) {
  const SettingRow* row = find_setting(key_of(assignment));
  if (row == nullptr) return true;  // the complaint about the key itself is the better one
  return row->key == "selectedTab" ||
         (row->method && *row->method != Method::from_list && row->change != SettingChange::shown);
}

[[noreturn]] void ask_for_method(const CommandLine& line) {
  for (const std::string& word : line.operands) {
    const std::string_view method = entry_exists(word) ? "" : closest_word(word, words_of_methods());
    if (!method.empty()) throw UsageError(translated("there is no method {}; did you mean {}?", word, method));
  }
  throw UsageError(
      translated("say how to rename: brindle {} PATH... insert TEXT, for one (brindle --help lists the methods)",
                 line.command->word));
}

// What the line says about files and folders counts more than a profile.
void choose_items(RenameSettings& settings, const Options& options) {
  set_mode(settings, options.folders.value_or(settings.isFolders));
  if (options.subfolders) settings.isIncludeSubFolders = *options.subfolders;
}

// Whether the start of the run stands where a profile's own date did.
bool misses_date(const RenameSettings& settings, const CommonSettings& common) {
  return uses_custom_date(settings) && settings.dateTimeCustomDate == common.settings.dateTimeCustomDate;
}

bool misses_date(const std::vector<Rule>& rules, const CommonSettings& common) {
  return std::ranges::any_of(rules, [&](const Rule& rule) { return misses_date(rule.settings, common); });
}

// One link of a chain.
NewRule make_rule(RenameSettings settings, const MethodCall& call, const Options& options) {
  fill_settings(settings, call);
  const std::int32_t tab = settings.selectedTab;
  assign(settings, options);
  settings.selectedTab = tab;
  return getRule(settings);
}

// Whether nothing but the profile says how to rename.
bool runs_method_of_profile(const CommandLine& line) {
  const Options& options = line.options;
  return line.methods.empty() && options.rules.empty() && options.list.empty() &&
         std::ranges::none_of(options.set, chooses_method);
}

// With --rules or --list a --set may say what to rename, not how.
void check_assignments(const Options& options, std::string_view source) {
  const auto found = std::ranges::find_if(options.set, chooses_method);
  if (found == options.set.end()) return;
  throw UsageError(translated("--set {} says how to rename, and so does {}; give one of them", *found, source));
}

void take_rules(RenameRequest& request, const Options& options) {
  check_assignments(options, "--rules");
  request.rules = read_rules(options.rules);
  check_chain(request.rules, options.rules);
  assign(request.settings, options);
}

void take_list(RenameRequest& request, const Options& options) {
  check_assignments(options, "--list");
  request.settings.selectedTab = tab_of(Method::from_list);
  request.settings.renameFile = decode_file_name(options.list);
  assign(request.settings, options);
}

}  // namespace

bool says_how(const CommandLine& line) {
  const Options& options = line.options;
  return !line.methods.empty() || !options.profile.empty() || !options.rules.empty() || !options.list.empty() ||
         std::ranges::any_of(options.set, chooses_method);
}

CommonSettings common_settings(const Options& options, Date now, bool must_choose_method) {
  CommonSettings common;
  RenameSettings& settings = common.settings;
  loadEmptyProfile(settings, now);
  if (!options.profile.empty()) {
    const SettingsRecord record = read_profile(options.profile);
    if (must_choose_method) check_method(record, options.profile);
    common.date_left_out = start_from_profile(settings, record).date_left_out;
    common.choices = choices_in(record);
  }
  common.choices = options.choices.over(std::move(common.choices));
  choose_items(settings, options);
  return common;
}

std::variant<std::vector<Rule>, Refusal> make_rules(const CommandLine& line, const RenameSettings& common) {
  std::vector<Rule> rules;
  for (const MethodCall& call : line.methods) {
    NewRule rule = make_rule(common, call, line.options);
    if (const auto* refusal = std::get_if<Refusal>(&rule)) return *refusal;
    if (auto* made = std::get_if<Rule>(&rule)) rules.push_back(std::move(*made));
  }
  return rules;
}

std::variant<RenameRequest, Refusal> make_request(const CommandLine& line, Date now, Demand demand) {
  const Options& options = line.options;
  const bool says_nothing = !says_how(line);
  if (says_nothing && demand == Demand::method) ask_for_method(line);
  RenameRequest request;
  const CommonSettings common = common_settings(options, now, demand == Demand::method && runs_method_of_profile(line));
  request.settings = common.settings;
  request.choices = common.choices;
  request.now = now;
  if (!options.rules.empty()) {
    take_rules(request, options);
  } else if (!options.list.empty()) {
    take_list(request, options);
  } else if (line.methods.size() > 1) {
    auto rules = make_rules(line, request.settings);
    if (const auto* refusal = std::get_if<Refusal>(&rules)) return *refusal;
    request.rules = std::get<std::vector<Rule>>(std::move(rules));
    if (misses_date(request.rules, common)) request.date_left_out = common.date_left_out;
    assign(request.settings, options);
  } else {
    if (!line.methods.empty()) fill_settings(request.settings, line.methods.front());
    assign(request.settings, options);
    if (says_nothing) return request;
    if (const auto refusal = validate_and_normalise(request.settings)) return *refusal;
    if (misses_date(request.settings, common)) request.date_left_out = common.date_left_out;
  }
  return request;
}

std::string describe(const Refusal& refusal) {
  if (refusal.setting.empty()) return localized(refusal.message);  // the title is no more than a caption
  return fmt::format("{}. {}", localized(refusal.title), localized(refusal.message));
}

}  // namespace brindle
