#include "cli/rename_request.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "app/string_table.h"
#include "cli/mask_text.h"
#include "cli/suggestion.h"
#include "settings/setting_text.h"

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
  return row->key == "selectedTab" || (row->tab != SettingTab::all_tabs && row->tab != SettingTab::window);
}

std::string_view closest_method(std::string_view word) {
  std::vector<std::string_view> words;
  for (const MethodRow& row : method_table()) words.push_back(row.word);
  return closest_word(word, words);
}

void check_method_given(const CommandLine& line) {
  if (!line.methods.empty() || std::ranges::any_of(line.options.set, chooses_method)) return;
  for (const std::string& word : line.operands) {
    struct stat facts {};
    const std::string_view method = ::lstat(word.c_str(), &facts) == 0 ? "" : closest_method(word);
    if (!method.empty()) throw UsageError(fmt::format("there is no method {}; did you mean {}?", word, method));
  }
  throw UsageError(
      fmt::format("say how to rename: brindle {} PATH... insert TEXT, for one (brindle --help lists the methods)",
                  line.command->word));
}

RenameSettings common_settings(const Options& options, Date now) {
  RenameSettings settings;
  loadEmptyProfile(settings, now);
  settings.isFolders = options.folders.value_or(false);
  settings.isFiles = !settings.isFolders;
  settings.fileFolderIndex = settings.isFolders ? 1 : 0;
  settings.isIncludeSubFolders = options.subfolders.value_or(true);
  return settings;
}

// One link of a chain: each method starts from the common settings alone.
std::optional<Refusal> add_rule(RenameRequest& request, const MethodCall& call, const Options& options) {
  RenameSettings settings = request.settings;
  fill_settings(settings, call);
  const std::int32_t tab = settings.selectedTab;
  assign(settings, options);
  settings.selectedTab = tab;
  NewRule rule = getRule(settings);
  if (const auto* refusal = std::get_if<Refusal>(&rule)) return *refusal;
  if (auto* made = std::get_if<Rule>(&rule)) request.rules.push_back(std::move(*made));
  return std::nullopt;
}

}  // namespace

std::variant<RenameRequest, Refusal> make_request(const CommandLine& line, Date now) {
  check_method_given(line);
  RenameRequest request;
  request.settings = common_settings(line.options, now);
  request.now = now;
  if (line.methods.size() > 1) {
    for (const MethodCall& call : line.methods) {
      if (const auto refusal = add_rule(request, call, line.options)) return *refusal;
    }
    assign(request.settings, line.options);
    return request;
  }
  if (!line.methods.empty()) fill_settings(request.settings, line.methods.front());
  assign(request.settings, line.options);
  if (const auto refusal = validate_and_normalise(request.settings)) return *refusal;
  return request;
}

std::string describe(const Refusal& refusal) {
  return fmt::format("{}. {}", localized(refusal.title), localized(refusal.message));
}

}  // namespace brindle
