#include "texts/rule_tree.h"

#include <utility>

#include "methods/method_table.h"
#include "platform/file_name.h"
#include "texts/string_table.h"

namespace brindle {

RuleNode::RuleNode(const Rule& rule)
    : rule_(rule), option_(localized(to_utf8(rule.type))), value_(localized(to_utf8(rule.rule))) {}

RuleNode::RuleNode(std::optional<Rule> rule, std::string option, std::string value)
    : rule_(std::move(rule)), option_(std::move(option)), value_(std::move(value)) {}

const std::vector<RuleNode>& RuleNode::children() const {
  if (children_) return *children_;
  children_.emplace();
  const std::optional<RuleVariant> variant = rule_ ? variant_of(*rule_) : std::nullopt;
  if (variant) {
    RuleRows rows(rule_->settings);
    method_row(rule_names(*variant).method).add_rows(rows, *variant);
    for (const RuleRow& row : rows.take()) {
      std::string value = row.word.empty() ? to_utf8(row.text) : localized(row.word);
      children_->emplace_back(std::nullopt, localized(row.label), std::move(value));
    }
  }
  return *children_;
}

std::vector<RuleNode> rule_nodes(std::span<const Rule> rules) {
  std::vector<RuleNode> nodes;
  nodes.reserve(rules.size());
  for (const Rule& rule : rules) nodes.emplace_back(rule);
  return nodes;
}

}  // namespace brindle
