#include "window/action_bar.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextDocument>

#include "texts/string_table.h"
#include "window/commands.h"
#include "window/file_table_model.h"
#include "window/file_table_view.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

QLabel* status_label(QWidget* parent, const char* name) {
  QLabel* label = plain_label(parent);
  label->setObjectName(QString::fromLatin1(name));
  return label;
}

void set_quiet(QLabel* label) {
  QPalette palette = label->palette();
  palette.setColor(QPalette::WindowText, quiet_colour(palette));
  label->setPalette(palette);
}

void show_text(QLabel* label, const QString& text) {
  label->setText(text);
  label->setVisible(!text.isEmpty());
}

// A button of an action's; its key stays the action's.
QPushButton* action_button(QAction* action, QWidget* parent) {
  auto* button = new QPushButton(action->icon(), action->iconText(), parent);
  button->setObjectName(QStringLiteral("button_") + action->objectName());
  button->setToolTip(action->toolTip());
  button->setEnabled(action->isEnabled());
  button->setMinimumWidth(button->fontMetrics().averageCharWidth() * 18);
  button->setMinimumHeight(button->fontMetrics().height() * 2);
  button->setAutoDefault(false);
  QObject::connect(button, &QPushButton::clicked, action, &QAction::trigger);
  QObject::connect(action, &QAction::changed, button, [button, action] { button->setEnabled(action->isEnabled()); });
  return button;
}

}  // namespace

ActionBar::ActionBar(WindowModel& model, FileTableView& table, const Commands& commands, QWidget* parent)
    : QWidget(parent),
      model_(model),
      table_(table),
      count_(status_label(this, "countLabel")),
      renameable_(status_label(this, "renameableLabel")),
      selected_(status_label(this, "selectedLabel")),
      time_(status_label(this, "lastActionTimeTaken")),
      unreadable_(status_label(this, "unreadableLabel")) {
  setObjectName(QStringLiteral("actionBar"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(spacing(*this) * 2);
  for (QLabel* label : {count_, renameable_, selected_, time_, unreadable_}) row->addWidget(label);
  row->addStretch();
  row->addWidget(action_button(commands.action("preview"), this));
  QPushButton* rename = action_button(commands.action("rename"), this);
  rename->setDefault(true);
  QFont bold = rename->font();
  bold.setBold(true);
  rename->setFont(bold);
  row->addWidget(rename);
  set_quiet(selected_);
  set_quiet(time_);
  connect(&table_, &FileTableView::selection_changed, this, [this] { show_state(); });
  observer_ = model_.add_observer([this](ChangedSet) { show_state(); });
  show_state();
}

ActionBar::~ActionBar() {
  model_.remove_observer(observer_);
}

void ActionBar::show_state() {
  const WindowState& state = model_.state();
  const std::size_t selected = table_.selected_count();
  const std::size_t renameable = table_.file_model().renameable_count();
  show_text(count_, qt_text(state.count_label));
  if (!state.isExecuting)
    show_text(renameable_, renameable > 0 ? qt_text(localized_format("RENAMEABLECOUNT", renameable)) : QString());
  show_text(selected_, selected > 1 ? qt_text(localized_format("SELECTEDCOUNT", selected)) : QString());
  show_text(time_, qt_text(state.lastActionTimeTaken));
  show_text(unreadable_, qt_text(state.unreadable_label));
  unreadable_->setToolTip(in_lines(state.unreadable_list));
}

}  // namespace brindle
