// The rule file sheet: a chain of rules as a tree.

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "app/rules_sheet_controller.h"
#include "app/window_model.h"
#include "window/sheets.h"
#include "window/sheets/sheet.h"
#include "window/text.h"
#include "window/window_memory.h"

namespace brindle {
namespace {

class RulesSheet final : public Sheet {
 public:
  RulesSheet(QWidget* parent, BrindleAppController& app);

 private:
  void make_file_row();
  void make_outline();
  void make_order_buttons();
  void selection_changed();
  void fill_outline();
  void show_state() override;

  RulesSheetController controller_;
  std::vector<Rule> shown_;
  QLineEdit* path_ = nullptr;
  QTreeWidget* outline_ = nullptr;
  QPushButton* up_ = nullptr;
  QPushButton* down_ = nullptr;
  QPushButton* clear_ = nullptr;
  QPushButton* save_ = nullptr;
  QPushButton* preview_ = nullptr;
};

// The row of the rule to which a row of the tree belongs.
int rule_row(const QTreeWidget& outline, QTreeWidgetItem* item) {
  while (item->parent() != nullptr) item = item->parent();
  return outline.indexOfTopLevelItem(item);
}

QTreeWidgetItem* rule_item(const RuleNode& node) {
  auto* top = new QTreeWidgetItem({in_one_line(qt_text(node.option())), in_one_line(qt_text(node.value()))});
  for (const RuleNode& row : node.children())
    top->addChild(new QTreeWidgetItem({qt_text(row.option()), in_one_line(qt_text(row.value()))}));
  QFont bold;
  bold.setBold(true);
  top->setFont(0, bold);
  return top;
}

RulesSheet::RulesSheet(QWidget* parent, BrindleAppController& app)
    : Sheet(parent, "RulesSheet", localized_text("RULESETTINGSFILETITLE")), controller_(app) {
  add_hint("RULESHEETHINT");
  make_file_row();
  make_outline();
  make_order_buttons();
  preview_ = add_default_button("previewRules", "RULESHEETPREVIEW", [this] { controller_.preview(); });
  preview_->setToolTip(localized_text("RULESHEETPREVIEWTIP"));
  save_ = add_action_button("saveRule", "RULESHEETSAVE", [this] { controller_.saveRule(); });
  finish_buttons("SHEETCLOSE", [this] { controller_.showHelp(); });
  attach(controller_);
  outline_->setFocus();
  resize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 32);
  keep_size(*this, app.model().user_defaults());
}

void RulesSheet::make_file_row() {
  path_ = path_line("ruleFilePath", "RULEFILEPATH");
  path_->setPlaceholderText(localized_text("RULESOFWINDOW"));
  rows()->addWidget(
      line({"RULEFILEPATH", path_, sheet_button("openRule", "RULESHEETOPEN", [this] { controller_.openRule(); })}));
}

void RulesSheet::make_outline() {
  outline_ = new QTreeWidget;
  outline_->setObjectName(QStringLiteral("rulesOutline"));
  outline_->setAccessibleName(localized_text("RULEOUTLINE"));
  outline_->setHeaderLabels({localized_text("RULECOLUMNOPTION"), localized_text("RULECOLUMNVALUE")});
  outline_->setAllColumnsShowFocus(true);
  outline_->setAlternatingRowColors(true);
  outline_->setMinimumHeight(fontMetrics().height() * 12);
  outline_->header()->setSectionsMovable(false);
  connect(outline_, &QTreeWidget::itemSelectionChanged, this, [this] { selection_changed(); });
  add_key(*outline_, QKeySequence::Delete, [this] { controller_.clearSelected(); });
  rows()->addWidget(outline_, 1);
}

void RulesSheet::make_order_buttons() {
  up_ = sheet_button("ruleMoveUp", "RULESHEETUP", [this] { controller_.moveUp(); });
  down_ = sheet_button("ruleMoveDown", "RULESHEETDOWN", [this] { controller_.moveDown(); });
  clear_ = sheet_button("ruleClear", "RULESHEETCLEAR", [this] { controller_.clearSelected(); });
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  for (QPushButton* button : {up_, down_, clear_}) row->addWidget(button);
  rows()->addLayout(row);
}

// A row of a rule means the rule.
void RulesSheet::selection_changed() {
  const QList<QTreeWidgetItem*> items = outline_->selectedItems();
  if (items.isEmpty()) return controller_.select_rule(std::nullopt);
  controller_.select_rule(static_cast<std::size_t>(rule_row(*outline_, items.front())));
}

void RulesSheet::fill_outline() {
  shown_ = controller_.rules();
  outline_->clear();
  for (const RuleNode& node : controller_.outline()) outline_->addTopLevelItem(rule_item(node));
  outline_->expandAll();
  outline_->resizeColumnToContents(0);
}

void RulesSheet::show_state() {
  const QSignalBlocker silence(outline_);
  if (shown_ != controller_.rules()) fill_outline();
  show_path(path_, controller_.ruleFilePath());
  const std::optional<std::size_t> selected = controller_.selectedRule();
  QTreeWidgetItem* current = outline_->currentItem();
  if (!selected) {
    outline_->clearSelection();
  } else if (current == nullptr || !current->isSelected() ||
             rule_row(*outline_, current) != static_cast<int>(*selected)) {
    outline_->setCurrentItem(outline_->topLevelItem(static_cast<int>(*selected)));
  }
  up_->setEnabled(controller_.can_move_up());
  down_->setEnabled(controller_.can_move_down());
  clear_->setEnabled(controller_.can_clear());
  save_->setEnabled(controller_.can_save());
  preview_->setEnabled(controller_.can_preview());
}

}  // namespace

void show_rules_sheet(QWidget* parent, BrindleAppController& app) {
  RulesSheet(parent, app).exec();
}

}  // namespace brindle
