#include "window/rules_model.h"

#include <array>

#include "app/brindle_app_controller.h"
#include "app/rules_controller.h"
#include "methods/method_table.h"
#include "texts/rule_tree.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"
#include "window/text.h"

namespace brindle {
namespace {

std::string shown(const std::string& value) {
  return in_sentence(utf16(qt_text(value)));
}

QString line_of(const std::string& name, const std::string& value) {
  return qt_text(name + ": " + value);
}

// The variant, and what tells the rule from others of its kind: the first of its rows that say something.
QString variant_text(const Rule& rule) {
  constexpr qsizetype enough = 2;
  const RuleNode node(rule);
  QStringList parts;
  for (const RuleNode& row : node.children()) {
    if (row.value().empty() || row.value() == localized("FALSE")) continue;
    parts << qt_text(row.value() == localized("TRUE") ? row.option() : shown(row.value()));
    if (parts.size() == enough) break;
  }
  const QString variant = qt_text(node.option());
  return parts.isEmpty() ? variant : variant + QStringLiteral(": ") + parts.join(QStringLiteral(", "));
}

}  // namespace

QString method_name(const Rule& rule) {
  const std::optional<RuleVariant> variant = variant_of(rule);
  // A rule of a method that is not known here is called what its file calls it.
  if (!variant) return in_one_line(qt_text(std::u16string_view(rule.rule)));
  return localized_text(method_row(rule_names(*variant).method).title);
}

QString rule_summary(const Rule& rule) {
  const RuleNode node(rule);
  QStringList lines = {line_of(utf8(method_name(rule)), node.option())};
  for (const RuleNode& row : node.children()) lines << line_of(row.option(), shown(row.value()));
  return lines.join(u'\n');
}

RulesModel::RulesModel(BrindleAppController& controller, QObject* parent)
    : QAbstractTableModel(parent), model_(controller.model()), rules_(controller.rules_controller()) {
  rows_ = static_cast<int>(rules_.rules().size());
  observer_ = model_.add_observer([this](ChangedSet changed) {
    if (has(changed, Changed::rules)) refresh();
  });
}

RulesModel::~RulesModel() {
  model_.remove_observer(observer_);
}

void RulesModel::refresh() {
  const int rows = static_cast<int>(rules_.rules().size());
  if (rows != rows_) {
    beginResetModel();
    rows_ = rows;
    endResetModel();
  } else if (rows > 0) {
    emit dataChanged(index(0, 0), index(rows - 1, column_count - 1));
  }
}

int RulesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int RulesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : column_count;
}

QVariant RulesModel::data(const QModelIndex& index, int role) const {
  const std::vector<Rule>& rules = rules_.rules();
  if (!index.isValid() || static_cast<std::size_t>(index.row()) >= rules.size()) return {};
  const Rule& rule = rules[static_cast<std::size_t>(index.row())];
  if (role == Qt::ToolTipRole) return rule_summary(rule);
  if (index.column() == active) {
    if (role == Qt::CheckStateRole) return rule.isActive ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::AccessibleTextRole) return localized_text("RULECOLUMNACTIVE");
    return {};
  }
  if (role != Qt::DisplayRole) return {};
  return index.column() == method ? method_name(rule) : variant_text(rule);
}

bool RulesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || index.column() != active) return false;
  rules_.setObjectValue(value.toInt() == Qt::Checked ? u"1" : u"0", "isActive", static_cast<std::size_t>(index.row()));
  return true;
}

QVariant RulesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  constexpr std::array<std::string_view, column_count> titles = {"RULECOLUMNACTIVE", "RULECOLUMNMETHOD",
                                                                 "RULECOLUMNVARIANT"};
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return localized_text(titles.at(static_cast<std::size_t>(section)));
}

Qt::ItemFlags RulesModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::ItemIsDropEnabled;  // between two rules
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
  return index.column() == active ? flags | Qt::ItemIsUserCheckable : flags;
}

}  // namespace brindle
