#pragma once

// The chain, and the rules that are made of the options shown. Main thread.

#include <optional>
#include <string>
#include <vector>

#include "app/rules_controller.h"
#include "app/window_model.h"

namespace brindle {

class ChainController final : private RulesOwner {
 public:
  explicit ChainController(MutableWindowModel& model) : model_(model), rules_(model.ports(), *this) {}

  RulesController& rules() { return rules_; }

  /// A rule of the options of the chosen tab; none, with `error` set where there is something to say.
  std::optional<Rule> getRule(std::string& error);
  bool addRule(std::string& error);
  void addToRule();

  struct RulesMenuItem {
    std::string title;  ///< the file name without its extension
    std::string file;   ///< its name in the rules folder
  };
  std::vector<RulesMenuItem> loadRulesMenu() const;
  void ruleMenuItemClick(const std::string& file);
  /// Makes a rule file's chain the window's and shows it.
  void open_document(const std::string& path);

 private:
  // RulesOwner
  std::optional<Rule> getCurrentRule() override;
  void setRule(const Rule& rule) override;
  std::string default_rules_folder() const override;
  void rules_changed() override;

  NewRule make_rule();

  MutableWindowModel& model_;
  RulesController rules_;
};

}  // namespace brindle
