#include "app/rules_controller.h"

#include <algorithm>
#include <utility>

#include "methods/rule_file.h"
#include "platform/app_info.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "texts/string_table.h"

namespace brindle {

void RulesController::update_enabled() {
  // While a chain runs, what is worked out here is for afterwards.
  Enabled& enabled = before_executing_ ? *before_executing_ : enabled_;
  const bool several = rules_.size() > 1;
  enabled.addButton = method_ != Method::from_list;
  enabled.clearAllButton = enabled.saveRuleButton = !rules_.empty();
  enabled.clearButton = enabled.updateRuleButton = selected_.has_value();
  enabled.moveUp = several && selected_ && *selected_ > 0;
  enabled.moveDown = several && selected_ && *selected_ + 1 < rules_.size();
  owner_.rules_changed();
}

void RulesController::setRules(std::vector<Rule> rules) {
  rules_ = std::move(rules);
  clear_selection();
}

void RulesController::setOpen(bool open) {
  is_open_ = open;
  owner_.rules_changed();
}

void RulesController::addRule(Rule rule) {
  rules_.push_back(std::move(rule));
  update_enabled();
}

void RulesController::tableViewSelectionDidChange(std::optional<std::size_t> row) {
  if (!enabled_.ruleTableView) return;
  selected_ = row && *row < rules_.size() ? row : std::nullopt;
  update_enabled();
  if (!selected_ || !is_open_) return;
  const Rule rule = rules_[*selected_];  // a copy: showing it may come back here
  owner_.setRule(rule);
}

std::u16string RulesController::objectValue(std::string_view column, std::size_t row) const {
  if (row >= rules_.size()) return {};
  const PropertyDictionary record = rule_to_dictionary(rules_[row]);
  const PropertyValue* value = record.find(decode_file_name(column));
  const auto* text = value != nullptr ? value->get_if<std::u16string>() : nullptr;
  return text != nullptr ? *text : std::u16string();
}

void RulesController::setObjectValue(std::u16string_view value, std::string_view column, std::size_t row) {
  if (row >= rules_.size() || !enabled_.ruleTableView) return;
  PropertyDictionary record = rule_to_dictionary(rules_[row]);
  record.set(decode_file_name(column), value);
  rules_[row] = rule_from_dictionary(record);
  update_enabled();
}

void RulesController::updateRule() {
  if (!enabled_.updateRuleButton || !selected_) return;
  std::optional<Rule> rule = owner_.getCurrentRule();
  if (!rule || !selected_ || rule->rule != rules_[*selected_].rule) return;
  rules_[*selected_] = std::move(*rule);
  update_enabled();
}

void RulesController::clearSelected() {
  if (!enabled_.clearButton || !selected_) return;
  const std::size_t row = *selected_;
  rules_.erase(rules_.begin() + static_cast<std::ptrdiff_t>(row));
  if (rules_.empty()) return clear_selection();
  tableViewSelectionDidChange(std::min(row, rules_.size() - 1));
}

void RulesController::clearAll() {
  if (enabled_.clearAllButton) setRules({});
}

void RulesController::moveUp() {
  if (enabled_.moveUp) move_selected(*selected_ - 1);
}

void RulesController::moveDown() {
  if (enabled_.moveDown) move_selected(*selected_ + 1);
}

void RulesController::move_selected(std::size_t row) {
  std::swap(rules_[*selected_], rules_[row]);
  tableViewSelectionDidChange(row);
}

void RulesController::tabChanged(std::optional<Method> method) {
  method_ = method;
  update_enabled();
}

void RulesController::resetData(bool select_top_row) {
  if (select_top_row && !rules_.empty()) return tableViewSelectionDidChange(0);
  if (selected_ && *selected_ >= rules_.size()) selected_.reset();
  update_enabled();
}

void RulesController::clear_selection() {
  selected_.reset();
  update_enabled();
}

void RulesController::setIsExecuting(bool executing) {
  if (executing == before_executing_.has_value()) return;
  if (executing) {
    before_executing_ = std::exchange(enabled_, Enabled{false, false, false, false, false, false, false, false, false});
  } else {
    enabled_ = *std::exchange(before_executing_, std::nullopt);
  }
  owner_.rules_changed();
}

void RulesController::openRule() {
  if (!enabled_.openRuleButton) return;
  const std::vector<std::string> chosen = ports_.chooser.choose(rule_file_request(owner_.default_rules_folder()));
  if (!chosen.empty()) open_rule_file(chosen.front());
}

void RulesController::saveRule() {
  if (enabled_.saveRuleButton) save_rules(ports_, owner_.default_rules_folder(), rules_);
}

bool RulesController::open_rule_file(const std::string& path) {
  std::vector<Rule> rules;
  if (!read_rules(ports_, path, MethodNames::repaired, rules)) return false;
  setRules(std::move(rules));
  resetData(true);
  return true;
}

void RulesController::reset_sequences() {
  for (Rule& rule : rules_) rule.reset_sequence();
}

OpenRequest rule_file_request(const std::string& folder) {
  OpenRequest request;
  request.title = localized_format("CHOOSERULESETTINGSFILETITLE", getAppTitle());
  request.folder = folder;
  request.extensions = {rule_extension};
  return request;
}

bool read_rules(const Ports& ports, const std::string& path, MethodNames names, std::vector<Rule>& rules) {
  Result<std::vector<Rule>> read = read_rule_file(path, names);
  if (read.ok()) {
    rules = *std::move(read);
    return true;
  }
  show_alert(ports, make_alert_of("OPENRULETITLE", "", read.reason()), AlertStyle::critical);
  return false;
}

bool save_rules(const Ports& ports, const std::string& folder, const std::vector<Rule>& rules) {
  SaveRequest request;
  request.title = localized_format("SAVERULESETTINGSFILETITLE", getAppTitle());
  request.folder = folder;
  request.extension = rule_extension;
  const std::optional<std::string> path = ports.chooser.choose(request);
  if (!path) return false;
  const Status status = write_rule_file(*path, rules);
  if (!status.ok()) log_failure("addAppVersionToRuleFile", status.reason());
  const std::string_view key = status.ok() ? "RULESETTINGSFILESAVEDSUCCESS" : "RULESETTINGSFILEUNABLETOSAVE";
  show_alert(ports, make_alert("RULESETTINGSFILETITLE", key),
             status.ok() ? AlertStyle::informational : AlertStyle::warning, status.reason());
  return status.ok();
}

}  // namespace brindle
