#include "app/rules_sheet_controller.h"

#include <algorithm>
#include <utility>

#include "app/preview_controller.h"
#include "methods/rule_file.h"
#include "platform/app_info.h"
#include "settings/preferences.h"
#include "texts/string_table.h"

namespace brindle {

RulesSheetController::RulesSheetController(BrindleAppController& app)
    : SheetController(app),
      chain_(app.rules_controller()),
      preview_(app.preview()),
      rules_(chain_.rules()),
      nodes_(rule_nodes(rules_)) {
  if (!rules_.empty()) selected_ = 0;
}

void RulesSheetController::select_rule(std::optional<std::size_t> rule) {
  selected_ = rule && *rule < rules_.size() ? rule : std::nullopt;
  tell();
}

bool RulesSheetController::can_move_up() const {
  return selected_ && *selected_ > 0;
}

bool RulesSheetController::can_move_down() const {
  return selected_ && *selected_ + 1 < rules_.size();
}

// After any change of the chain.
void RulesSheetController::show(std::optional<std::size_t> selected) {
  nodes_ = rule_nodes(rules_);
  selected_ = selected;
  tell();
}

void RulesSheetController::openRule() {
  const std::vector<std::string> chosen = ports().chooser.choose(rule_file_request(default_rules_folder()));
  if (chosen.empty()) return;
  const std::string& path = chosen.front();
  if (!isFileVersionMatch(appVersionInPlist(path).value_or(""))) {
    return show_alert(ports(), make_alert("OPENRULETITLE", "OPENRULEINCOMPATIBLE"));
  }
  if (!read_rules(ports(), path, MethodNames::as_read, rules_)) return;
  ruleFilePath_ = path;
  show(rules_.empty() ? std::nullopt : std::optional<std::size_t>(0));
}

void RulesSheetController::saveRule() {
  if (can_save()) save_rules(ports(), default_rules_folder(), rules_);
}

void RulesSheetController::preview() {
  if (!can_preview() || !can_begin()) return;
  chain_.setRules(rules_);
  chain_.resetData(false);
  ports().main_thread.post([&preview = preview_] { preview.actionPreviewRule(); });
  close();
}

void RulesSheetController::moveUp() {
  if (can_move_up()) move_to(*selected_ - 1);
}

void RulesSheetController::moveDown() {
  if (can_move_down()) move_to(*selected_ + 1);
}

void RulesSheetController::move_to(std::size_t row) {
  std::swap(rules_[*selected_], rules_[row]);
  show(row);
}

void RulesSheetController::clearSelected() {
  if (!selected_) return;
  const std::size_t row = *selected_;
  rules_.erase(rules_.begin() + static_cast<std::ptrdiff_t>(row));
  show(rules_.empty() ? std::nullopt : std::optional(std::min(row, rules_.size() - 1)));
}

}  // namespace brindle
