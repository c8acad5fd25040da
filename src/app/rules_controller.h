#pragma once

// The chain of rules and its table in the drawer. Main thread.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/ports.h"
#include "methods/rule.h"
#include "methods/rule_file.h"

namespace brindle {

/// What the chain needs of its owner.
class RulesOwner {
 public:
  virtual ~RulesOwner() = default;
  /// A rule of the options shown, editing ended and a refusal already told; none without one.
  virtual std::optional<Rule> getCurrentRule() = 0;
  /// Shows a rule's options in the window.
  virtual void setRule(const Rule& rule) = 0;
  virtual std::string default_rules_folder() const = 0;
  virtual void rules_changed() = 0;
};

class RulesController {
 public:
  /// Which of the drawer's controls can be used.
  struct Enabled {
    bool ruleTableView = true;
    bool addButton = true;
    bool clearButton = false;
    bool clearAllButton = false;
    bool openRuleButton = true;
    bool saveRuleButton = false;
    bool updateRuleButton = false;
    bool moveUp = false;
    bool moveDown = false;
    bool operator==(const Enabled&) const = default;
  };

  RulesController(const Ports& ports, RulesOwner& owner) : ports_(ports), owner_(owner) {}

  const std::vector<Rule>& rules() const { return rules_; }
  void setRules(std::vector<Rule> rules);
  std::optional<std::size_t> selectedRule() const { return selected_; }
  const Enabled& enabled() const { return enabled_; }

  /// The drawer is open: only then does selecting a rule load it into the window, and Preview run the chain.
  bool isOpen() const { return is_open_; }
  void setOpen(bool open);

  void addRule(Rule rule);
  void tableViewSelectionDidChange(std::optional<std::size_t> row);
  /// The value of a rule's key ("rule", "type", "isActive"), and how its check box is switched ("isActive").
  std::u16string objectValue(std::string_view column, std::size_t row) const;
  void setObjectValue(std::u16string_view value, std::string_view column, std::size_t row);
  void updateRule();
  void clearSelected();
  void clearAll();
  void moveUp();
  void moveDown();
  /// The window shows another method: a list makes no rules. None where the settings name no method.
  void tabChanged(std::optional<Method> method);
  void resetData(bool select_top_row);
  void clear_selection();
  /// While a chain runs every control is off; afterwards each is as it was.
  void setIsExecuting(bool executing);

  void openRule();
  void saveRule();
  /// Replaces the chain by a file's, method names repaired, and selects the first. False, with the reason told, when it
  /// cannot be read.
  bool open_rule_file(const std::string& path);

  /// Marks the counters of all sequence rules as not started.
  void reset_sequences();

 private:
  void update_enabled();
  void move_selected(std::size_t row);

  Ports ports_;
  RulesOwner& owner_;
  std::vector<Rule> rules_;
  std::optional<std::size_t> selected_;
  Enabled enabled_;
  std::optional<Enabled> before_executing_;
  std::optional<Method> method_;
  bool is_open_ = false;
};

// What both the drawer and the rule file sheet do.

/// The panel that asks for a rule file.
OpenRequest rule_file_request(const std::string& folder);
/// Reads a rule file; false, with the reason told and `rules` untouched, when it cannot be read.
bool read_rules(const Ports& ports, const std::string& path, MethodNames names, std::vector<Rule>& rules);
/// Asks for a place, writes a chain there and tells how it went. False when it was not saved.
bool save_rules(const Ports& ports, const std::string& folder, const std::vector<Rule>& rules);

}  // namespace brindle
