#pragma once

// The rule file sheet: a chain as a tree that can be read, put in order, saved, and previewed. It begins with the main
// window's chain and works on a copy; only Preview hands the copy back. Main thread.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "app/sheet_controller.h"
#include "texts/rule_tree.h"

namespace brindle {

class PreviewController;
class RulesController;

class RulesSheetController final : public SheetController {
 public:
  explicit RulesSheetController(BrindleAppController& app);

  const std::vector<Rule>& rules() const { return rules_; }
  /// The outline's top rows, one a rule; valid until the chain changes.
  const std::vector<RuleNode>& outline() const { return nodes_; }
  const std::string& ruleFilePath() const { return ruleFilePath_; }  ///< of the file opened here; "" before
  std::optional<std::size_t> selectedRule() const { return selected_; }
  void select_rule(std::optional<std::size_t> rule);

  // Which buttons are on.

  bool can_move_up() const;
  bool can_move_down() const;
  bool can_clear() const { return selected_.has_value(); }
  bool can_save() const { return !rules_.empty(); }
  bool can_preview() const { return !rules_.empty(); }

  /// Method names of old files stay as they are in the file.
  void openRule();
  void saveRule();
  /// Closes the sheet, makes its chain the window's, and runs the chain's preview.
  void preview();
  void moveUp();
  void moveDown();
  void clearSelected();

 private:
  std::string_view help_page() const override { return "Rules.html"; }
  void show(std::optional<std::size_t> selected);
  void move_to(std::size_t row);

  RulesController& chain_;
  PreviewController& preview_;
  std::vector<Rule> rules_;
  std::vector<RuleNode> nodes_;
  std::string ruleFilePath_;
  std::optional<std::size_t> selected_;
};

}  // namespace brindle
