#include "app/chain_controller.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "app/document_name.h"
#include "app/preview_controller.h"
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

std::optional<Rule> rule_in(NewRule& made) {
  auto* rule = std::get_if<Rule>(&made);
  return rule ? std::optional(std::move(*rule)) : std::nullopt;
}

}  // namespace

// Putting the options into order for a rule shows them, and wakes nothing.
NewRule ChainController::make_rule() {
  RenameSettings edited = model_.values();
  NewRule made = brindle::getRule(edited);
  model_.commit_quietly(std::move(edited));
  return made;
}

std::optional<Rule> ChainController::getRule(std::string& error) {
  NewRule made = make_rule();
  if (const auto* refusal = std::get_if<Refusal>(&made)) {
    error = localized(refusal->title) + ". " + localized(refusal->message);
    model_.ports().desktop.focus_setting(refusal->setting);
  }
  return rule_in(made);
}

bool ChainController::addRule(std::string& error) {
  std::optional<Rule> rule = getRule(error);
  if (!rule) return error.empty();
  rules_.addRule(std::move(*rule));
  return true;
}

void ChainController::addToRule() {
  if (model_.state().is_busy()) return;
  model_.ports().desktop.end_editing();
  std::string error;
  if (addRule(error)) return rules_.resetData(false);
  show_alert(model_.ports(), make_alert_of("UNABLETOADDRULE", "", error));
}

std::optional<Rule> ChainController::getCurrentRule() {
  model_.ports().desktop.end_editing();
  NewRule made = make_rule();
  if (const auto* refusal = std::get_if<Refusal>(&made)) tell_refusal(model_.ports(), *refusal);
  return rule_in(made);
}

void ChainController::setRule(const Rule& rule) {
  RenameSettings edited = model_.values();
  brindle::setRule(edited, rule);
  model_.commit_quietly(std::move(edited));
}

std::string ChainController::default_rules_folder() const {
  return model_.preferences().defaultRulesFolderPath;
}

void ChainController::rules_changed() {
  model_.tell(Changed::rules);
}

std::vector<ChainController::RulesMenuItem> ChainController::loadRulesMenu() const {
  std::vector<RulesMenuItem> items;
  for (const std::string& name : names_in(model_.preferences().defaultRulesFolderPath)) {
    if (!has_extension(name, rule_extension)) continue;
    items.push_back({to_utf8(decode_file_name(std::string_view(name).substr(0, name.rfind('.')))), name});
  }
  std::ranges::sort(items, [](const RulesMenuItem& a, const RulesMenuItem& b) {
    const int order = compareFiles(decode_file_name(a.file), decode_file_name(b.file));
    return order != 0 ? order < 0 : a.file < b.file;
  });
  return items;
}

void ChainController::ruleMenuItemClick(const std::string& file) {
  if (!model_.state().is_busy()) open_document(default_rules_folder() + "/" + file);
}

void ChainController::open_document(const std::string& path) {
  if (!rules_.open_rule_file(path)) return;
  model_.ports().desktop.bring_to_front();
  rules_.setOpen(true);
  rules_.resetData(true);
}

}  // namespace brindle
