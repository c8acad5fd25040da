#pragma once

// A rule as a person reads it: a node a rule, and below it a row for each setting that means something for the rule's
// variant. Texts are UTF-8 and localised. A tree belongs to one thread at a time.

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "methods/rule.h"

namespace brindle {

class RuleNode {
 public:
  /// The top node of a rule: its option is the variant, its value the method.
  explicit RuleNode(const Rule& rule);
  /// A top node when there is a rule, else a row of one.
  RuleNode(std::optional<Rule> rule, std::string option, std::string value);

  const std::optional<Rule>& rule() const { return rule_; }  ///< on top nodes
  const std::string& option() const { return option_; }      ///< the variant; of a row, its label
  const std::string& value() const { return value_; }        ///< the row's text; "TRUE" and "FALSE" for flags

  /// The rows of a top node, in reading order, made on the first call and kept; none for a row and for a rule of an
  /// unknown method.
  const std::vector<RuleNode>& children() const;
  std::size_t numberOfChildren() const { return children().size(); }
  const RuleNode& childAtIndex(std::size_t index) const { return children().at(index); }

 private:
  std::optional<Rule> rule_;
  std::string option_;
  std::string value_;
  mutable std::optional<std::vector<RuleNode>> children_;
};

/// The top nodes of a chain.
std::vector<RuleNode> rule_nodes(std::span<const Rule> rules);

}  // namespace brindle
