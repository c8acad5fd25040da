// Rules: made of the tab shown, shown on their tab, and opened from the menu.

#include <algorithm>
#include <filesystem>
#include <utility>

#include "app/brindle_app_controller.h"
#include "app/document_name.h"
#include "list/file_order.h"
#include "methods/rule_file.h"
#include "platform/file_name.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::vector<std::string> names_in(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code failed;
  for (std::filesystem::directory_iterator entry(folder, failed), end; !failed && entry != end;
       entry.increment(failed)) {
    names.push_back(entry->path().filename().string());
  }
  return names;
}

}  // namespace

// Putting the options into order for a rule shows them, and wakes nothing.
NewRule BrindleAppController::make_rule() {
  RenameSettings edited = values();
  NewRule made = brindle::getRule(edited);
  commit_quietly(edited);
  return made;
}

std::optional<Rule> BrindleAppController::getRule(std::string& error) {
  NewRule made = make_rule();
  if (const auto* refusal = std::get_if<Refusal>(&made)) {
    error = localized(refusal->title) + ". " + localized(refusal->message);
    ports_.desktop.focus_setting(refusal->setting);
  }
  auto* rule = std::get_if<Rule>(&made);
  return rule ? std::optional(std::move(*rule)) : std::nullopt;
}

bool BrindleAppController::addRule(std::string& error) {
  std::optional<Rule> rule = getRule(error);
  if (!rule) return error.empty();
  rules_.addRule(std::move(*rule));
  return true;
}

void BrindleAppController::addToRule() {
  if (state_.isExecuting && !state_.is_quiet) return;
  ports_.desktop.end_editing();
  std::string error;
  if (addRule(error)) return rules_.resetData(false);
  Alert alert;
  alert.title_key = "UNABLETOADDRULE";
  alert.title = localized(alert.title_key);
  alert.message = error;
  ports_.alerts.show(alert);
}

std::optional<Rule> BrindleAppController::getCurrentRule() {
  ports_.desktop.end_editing();
  NewRule made = make_rule();
  if (const auto* refusal = std::get_if<Refusal>(&made)) tell_refusal(*refusal);
  auto* rule = std::get_if<Rule>(&made);
  return rule ? std::optional(std::move(*rule)) : std::nullopt;
}

void BrindleAppController::setRule(const Rule& rule) {
  RenameSettings edited = values();
  brindle::setRule(edited, rule);
  commit_quietly(edited);
}

std::string BrindleAppController::default_rules_folder() const {
  return preferences_.defaultRulesFolderPath;
}

void BrindleAppController::rules_changed() {
  tell(Changed::rules);
}

std::vector<BrindleAppController::RulesMenuItem> BrindleAppController::loadRulesMenu() const {
  std::vector<RulesMenuItem> items;
  for (const std::string& name : names_in(preferences_.defaultRulesFolderPath)) {
    if (!has_extension(name, rule_extension)) continue;
    items.push_back({to_utf8(decode_file_name(std::string_view(name).substr(0, name.rfind('.')))), name});
  }
  std::ranges::sort(items, [](const RulesMenuItem& a, const RulesMenuItem& b) {
    const int order = compareFiles(decode_file_name(a.file), decode_file_name(b.file));
    return order != 0 ? order < 0 : a.file < b.file;
  });
  return items;
}

void BrindleAppController::ruleMenuItemClick(const std::string& file) {
  if (state_.isExecuting && !state_.is_quiet) return;
  if (!rules_.open_rule_file(preferences_.defaultRulesFolderPath + "/" + file)) return;
  ports_.desktop.bring_to_front();
  rules_.setOpen(true);
  rules_.resetData(true);
}

}  // namespace brindle
