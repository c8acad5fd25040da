#include "window/rules_drawer.h"

#include <QDropEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>
#include <functional>
#include <utility>
#include <vector>

#include "app/brindle_app_controller.h"
#include "app/chain_controller.h"
#include "app/rules_controller.h"
#include "app/window_model.h"
#include "texts/string_table.h"
#include "window/icons.h"
#include "window/rules_model.h"
#include "window/text.h"

namespace brindle {
namespace {

/// The table: Space switches a rule, Delete removes it, Alt with an arrow moves it, and so does dragging.
class RulesTable final : public QTableView {
 public:
  explicit RulesTable(RulesController& rules) : rules_(rules) {
    setObjectName(QStringLiteral("ruleTableView"));
    setAccessibleName(localized_text("RULESTABLE"));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setDragDropMode(InternalMove);
    setDragDropOverwriteMode(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  }

 protected:
  bool event(QEvent* event) override {
    // Before the window's shortcuts of the same keys, which are for the list.
    if (event->type() == QEvent::ShortcutOverride && command_of(static_cast<QKeyEvent*>(event))) {
      event->accept();
      return true;
    }
    return QTableView::event(event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (const std::function<void()> command = command_of(event)) {
      command();
    } else {
      QTableView::keyPressEvent(event);
    }
  }
  void dropEvent(QDropEvent* event) override {
    const std::optional<std::size_t> dragged = rules_.selectedRule();
    if (event->source() != this || !dragged) return;
    const int before = row_at(event->position().toPoint());
    // Told as copied, so that the view does not take the row away by itself.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    for (int row = static_cast<int>(*dragged); row > before; --row) rules_.moveUp();
    for (int row = static_cast<int>(*dragged); row + 1 < before; ++row) rules_.moveDown();
    setState(NoState);
    viewport()->update();
  }
  void paintEvent(QPaintEvent* event) override {
    QTableView::paintEvent(event);
    if (model() == nullptr || model()->rowCount() != 0) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int gap = fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(gap, gap, -gap, -gap), Qt::AlignCenter | Qt::TextWordWrap,
                     localized_text("RULESEMPTY"));
  }

 private:
  // The rule that a place is before.
  int row_at(const QPoint& place) const {
    const QModelIndex index = indexAt(place);
    if (!index.isValid()) return model()->rowCount();
    return index.row() + (place.y() > visualRect(index).center().y() ? 1 : 0);
  }
  std::function<void()> command_of(const QKeyEvent* event) {
    const RulesController::Enabled& enabled = rules_.enabled();
    if (event->matches(QKeySequence::Delete) && enabled.clearButton) return [this] { rules_.clearSelected(); };
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier && currentIndex().isValid()) {
      return [this] {
        const QModelIndex box = currentIndex().siblingAtColumn(RulesModel::active);
        const bool on = box.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        model()->setData(box, on ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
      };
    }
    if (!event->modifiers().testFlag(Qt::AltModifier)) return {};
    if (event->key() == Qt::Key_Up && enabled.moveUp) return [this] { rules_.moveUp(); };
    if (event->key() == Qt::Key_Down && enabled.moveDown) return [this] { rules_.moveDown(); };
    return {};
  }

  RulesController& rules_;
};

class RulesDrawer final : public QWidget {
 public:
  RulesDrawer(BrindleAppController& controller, QWidget* parent);
  ~RulesDrawer() override { controller_.model().remove_observer(observer_); }

 private:
  using Flag = bool RulesController::Enabled::*;

  RulesController& rules() { return controller_.rules_controller(); }
  QToolButton* button(const char* name, std::string_view drawing, std::string_view tip, Flag flag,
                      std::function<void()> clicked);
  QHBoxLayout* make_commands();
  QHBoxLayout* make_changes();
  void update_rule();
  void show_menu(const QPoint& place);
  void show_state();

  BrindleAppController& controller_;
  RulesTable* table_;
  std::vector<std::pair<QToolButton*, Flag>> buttons_;
  std::uint32_t observer_ = 0;
  bool is_showing_ = false;  // what the controller says is selected, not a person
};

RulesDrawer::RulesDrawer(BrindleAppController& controller, QWidget* parent)
    : QWidget(parent), controller_(controller), table_(new RulesTable(controller.rules_controller())) {
  setObjectName(QStringLiteral("rulesDrawer"));
  auto* model = new RulesModel(controller, this);
  table_->setModel(model);
  table_->resizeColumnToContents(RulesModel::active);
  table_->horizontalHeader()->setSectionResizeMode(RulesModel::active, QHeaderView::ResizeToContents);
  table_->horizontalHeader()->setSectionResizeMode(RulesModel::method, QHeaderView::ResizeToContents);
  table_->horizontalHeader()->setSectionResizeMode(RulesModel::variant, QHeaderView::Stretch);
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (is_showing_) return;
    const QModelIndexList selected = table_->selectionModel()->selectedRows();
    rules().tableViewSelectionDidChange(
        selected.isEmpty() ? std::nullopt : std::optional(static_cast<std::size_t>(selected.front().row())));
  });
  auto* rows = new QVBoxLayout(this);
  rows->addLayout(make_commands());
  rows->addWidget(table_, 1);
  rows->addLayout(make_changes());
  table_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(table_, &QWidget::customContextMenuRequested, this, &RulesDrawer::show_menu);
  observer_ = controller.model().add_observer([this](ChangedSet changed) {
    if (has(changed, Changed::rules) || has(changed, Changed::state)) show_state();
  });
  show_state();
}

QToolButton* RulesDrawer::button(const char* name, std::string_view drawing, std::string_view tip, Flag flag,
                                 std::function<void()> clicked) {
  auto* made = new QToolButton;
  made->setObjectName(QLatin1String(name));
  made->setIcon(icon(drawing));
  made->setToolTip(localized_text(tip));
  made->setAccessibleName(localized_text(tip));
  made->setAutoRaise(true);
  made->setFocusPolicy(Qt::StrongFocus);
  connect(made, &QToolButton::clicked, this, std::move(clicked));
  buttons_.emplace_back(made, flag);
  return made;
}

QHBoxLayout* RulesDrawer::make_commands() {
  using Enabled = RulesController::Enabled;
  QToolButton* add =
      button("addButton", "plus", "RULEADDTIP", &Enabled::addButton, [this] { controller_.chain().addToRule(); });
  QToolButton* update =
      button("updateRuleButton", "edit_name", "RULEUPDATETIP", &Enabled::updateRuleButton, [this] { update_rule(); });
  add->setText(localized_text("RULEADD"));
  update->setText(localized_text("RULEUPDATE"));
  for (QToolButton* made : {add, update}) {
    made->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    made->setAccessibleName(made->text());
  }
  auto* row = new QHBoxLayout;
  row->addWidget(add);
  row->addWidget(update);
  row->addStretch(1);
  row->addWidget(
      button("openRuleButton", "open", "RULEOPEN", &Enabled::openRuleButton, [this] { rules().openRule(); }));
  row->addWidget(
      button("saveRuleButton", "save", "RULESAVE", &Enabled::saveRuleButton, [this] { rules().saveRule(); }));
  return row;
}

QHBoxLayout* RulesDrawer::make_changes() {
  using Enabled = RulesController::Enabled;
  auto* row = new QHBoxLayout;
  row->addWidget(button("moveUp", "move_up", "RULEMOVEUP", &Enabled::moveUp, [this] { rules().moveUp(); }));
  row->addWidget(button("moveDown", "move_down", "RULEMOVEDOWN", &Enabled::moveDown, [this] { rules().moveDown(); }));
  row->addStretch(1);
  row->addWidget(
      button("clearButton", "remove", "RULECLEAR", &Enabled::clearButton, [this] { rules().clearSelected(); }));
  row->addWidget(
      button("clearAllButton", "clear", "RULECLEARALL", &Enabled::clearAllButton, [this] { rules().clearAll(); }));
  return row;
}

// A rule keeps its method, which is said where nothing would happen otherwise.
void RulesDrawer::update_rule() {
  const std::optional<std::size_t> selected = rules().selectedRule();
  const std::optional<RuleVariant> variant =
      selected ? variant_of(rules().rules()[*selected]) : std::optional<RuleVariant>();
  if (variant && rule_names(*variant).method != selected_method(controller_.model().values())) {
    auto* update = findChild<QWidget*>(QStringLiteral("updateRuleButton"));
    const std::string method = utf8(method_name(rules().rules()[*selected]));
    QToolTip::showText(update->mapToGlobal(update->rect().bottomLeft()),
                       qt_text(localized_format("RULEOTHERMETHOD", method)), update);
    return;
  }
  rules().updateRule();
}

void RulesDrawer::show_menu(const QPoint& place) {
  QMenu menu(this);
  menu.setObjectName(QStringLiteral("ruleMenu"));
  for (const auto& [made, flag] : buttons_) {
    QAction* action = menu.addAction(made->icon(), made->accessibleName(), made, &QToolButton::click);
    action->setEnabled(made->isEnabled());
  }
  menu.exec(table_->viewport()->mapToGlobal(place));
}

void RulesDrawer::show_state() {
  const RulesController::Enabled& enabled = rules().enabled();
  for (const auto& [made, flag] : buttons_) made->setEnabled(enabled.*flag);
  table_->setEnabled(enabled.ruleTableView);
  const std::optional<std::size_t> selected = rules().selectedRule();
  const QModelIndexList shown = table_->selectionModel()->selectedRows();
  const int wanted = selected ? static_cast<int>(*selected) : -1;
  if (wanted == (shown.isEmpty() ? -1 : shown.front().row())) return;
  is_showing_ = true;
  if (wanted < 0 || wanted >= table_->model()->rowCount()) {
    table_->clearSelection();
  } else {
    table_->selectRow(wanted);
  }
  is_showing_ = false;
}

}  // namespace

QWidget* make_rules_drawer(BrindleAppController& controller, QWidget* parent) {
  return new RulesDrawer(controller, parent);
}

}  // namespace brindle
