#include "window/form_rows.h"

#include <QApplication>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>
#include <QWidget>
#include <utility>

#include "app/name_example.h"
#include "app/window_model.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"
#include "window/text.h"

namespace brindle {

// The widget of a method's panel, which puts its columns one below the other where there is no room beside. Main
// thread.

class PanelBody final : public QWidget {
 public:
  using QWidget::QWidget;

  /// The layout of the columns, in the panel's own layout.
  void set_columns(QBoxLayout* columns);

 protected:
  bool event(QEvent* event) override;
  /// What the panel lies in tells how much room there is: the panel itself is never narrower than what it shows.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void fit();
  int width_side_by_side() const;

  QBoxLayout* columns_ = nullptr;
};

void PanelBody::set_columns(QBoxLayout* columns) {
  columns_ = columns;
  fit();
}

bool PanelBody::event(QEvent* event) {
  if (event->type() == QEvent::ParentAboutToChange && parentWidget() != nullptr)
    parentWidget()->removeEventFilter(this);
  if (event->type() == QEvent::ParentChange && parentWidget() != nullptr) parentWidget()->installEventFilter(this);
  if (event->type() == QEvent::Show || event->type() == QEvent::LayoutRequest) fit();
  return QWidget::event(event);
}

bool PanelBody::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) fit();
  return QWidget::eventFilter(watched, event);
}

int PanelBody::width_side_by_side() const {
  const QMargins margins = layout()->contentsMargins();
  int width = margins.left() + margins.right() + fontMetrics().height() * 2 * (columns_->count() - 1);
  for (int i = 0; i < columns_->count(); ++i) width += columns_->itemAt(i)->minimumSize().width();
  return width;
}

void PanelBody::fit() {
  if (columns_ == nullptr || parentWidget() == nullptr) return;
  const bool has_room = width_side_by_side() <= parentWidget()->width();
  const auto direction = has_room ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
  const int spacing = has_room ? fontMetrics().height() * 2 : style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing);
  // Setting what is set already asks for another layout, and another, for ever.
  if (columns_->spacing() != spacing) columns_->setSpacing(spacing);
  if (columns_->direction() == direction) return;
  columns_->setDirection(direction);
  layout()->activate();
}

namespace {

QString object_name(std::string_view key) {
  return qt_text(key);
}

void name_field(QWidget* field, SettingKey key, TextKey name) {
  field->setObjectName(object_name(key));
  field->setAccessibleName(localized_text(name));
}

// What takes the keyboard of a field that may be several in a line.
QWidget* first_field(QWidget* field) {
  if (field->focusPolicy() != Qt::NoFocus) return field;
  for (QWidget* child : field->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (child->focusPolicy() != Qt::NoFocus) return child;
  }
  return field;
}

// A label is on while its field is.
class BuddyFollower final : public QObject {
 public:
  BuddyFollower(QLabel* label, QWidget* buddy) : QObject(label), label_(label) {
    buddy->installEventFilter(this);
    label->setBuddy(buddy);
    label->setEnabled(buddy->isEnabled());
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange) label_->setEnabled(static_cast<QWidget*>(watched)->isEnabled());
    return false;
  }

 private:
  QLabel* label_;
};

void set_buddy(QLabel* label, QWidget* buddy) {
  new BuddyFollower(label, buddy);  // goes with the label
}

}  // namespace

QLineEdit* text_field(const PanelContext& context, SettingKey key, TextKey name, int characters) {
  auto* field = new QLineEdit;
  name_field(field, key, name);
  field->setClearButtonEnabled(true);
  // The clear button takes the place of about three characters.
  field->setMinimumWidth(field->fontMetrics().averageCharWidth() * (characters + 3));
  context.bindings.bind(field, key);
  return field;
}

NumberField* number_field(const PanelContext& context, SettingKey key, TextKey name, NumberField::Limits limits) {
  auto* field = new NumberField(limits);
  name_field(field, key, name);
  context.bindings.bind_number(field, key);
  return field;
}

QCheckBox* check_box(const PanelContext& context, SettingKey key, TextKey text) {
  auto* box = new QCheckBox(text_with_mnemonic(text));
  box->setObjectName(object_name(key));
  context.bindings.bind(box, key);
  return box;
}

QComboBox* choice_box(const PanelContext& context, SettingKey key, TextKey name, const std::vector<Entry>& entries) {
  auto* box = new QComboBox;
  name_field(box, key, name);
  for (const Entry& entry : entries) box->addItem(localized_text(entry.text), entry.data);
  context.bindings.bind(box, key);
  return box;
}

QComboBox* direction_box(const PanelContext& context, SettingKey key) {
  return choice_box(context, key, "COUNTFROM", {{"FROMSTART", {}}, {"FROMEND", {}}});
}

std::vector<QRadioButton*> radio_buttons(const PanelContext& context, QWidget* owner, SettingKey key,
                                         const std::vector<TextKey>& texts, std::function<void(int)> chosen) {
  auto* group = new QButtonGroup(owner);
  group->setObjectName(object_name(key));
  std::vector<QRadioButton*> buttons;
  for (const TextKey text : texts) {
    auto* button = new QRadioButton(text_with_mnemonic(text), owner);
    const int id = static_cast<int>(buttons.size());
    button->setObjectName(object_name(key) + QString::number(id));
    group->addButton(button, id);
    buttons.push_back(button);
  }
  context.bindings.bind(group, key, std::move(chosen));
  return buttons;
}

QPushButton* push_button(std::string_view name, TextKey text, std::function<void()> clicked) {
  auto* button = new QPushButton(text_with_mnemonic(text));
  button->setObjectName(object_name(name));
  button->setAutoDefault(false);
  QObject::connect(button, &QPushButton::clicked, button, std::move(clicked));
  return button;
}

QLabel* text_label(TextKey text) {
  return plain_label(localized_text(text));
}

QLabel* hint_label(TextKey text) {
  QLabel* label = text_label(text);
  label->setForegroundRole(QPalette::PlaceholderText);
  label->setWordWrap(true);
  return label;
}

void enable_when(const PanelContext& context, const std::vector<SettingKey>& keys, std::vector<QWidget*> fields,
                 Condition condition) {
  context.bindings.follow(
      keys, [fields = std::move(fields), condition = std::move(condition)](const RenameSettings& settings) {
        const bool on = condition(settings);
        for (QWidget* field : fields) field->setEnabled(on);
      });
}

void show_when(const PanelContext& context, const std::vector<SettingKey>& keys, std::vector<QWidget*> fields,
               Condition condition) {
  context.bindings.follow(
      keys, [fields = std::move(fields), condition = std::move(condition)](const RenameSettings& settings) {
        const bool shown = condition(settings);
        // A field without a parent would become a window of its own.
        for (QWidget* field : fields) {
          if (shown && field->parentWidget() == nullptr) continue;
          field->setVisible(shown);
        }
      });
}

QWidget* line(const std::vector<LinePart>& parts) {
  auto* widget = new QWidget;
  auto* layout = new QHBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  QLabel* waiting = nullptr;
  bool grows = false;
  for (const LinePart& part : parts) {
    if (part.widget == nullptr) {
      waiting = plain_label(text_with_mnemonic(part.text));
      layout->addWidget(waiting);
      continue;
    }
    const bool can_grow = part.widget->sizePolicy().horizontalPolicy() == QSizePolicy::Expanding;
    grows = grows || can_grow;
    layout->addWidget(part.widget, can_grow ? 1 : 0);
    if (waiting != nullptr) set_buddy(waiting, first_field(part.widget));
    waiting = nullptr;
  }
  // Even beside what can grow, which may be hidden.
  layout->addStretch(grows ? 0 : 1);
  return widget;
}

FormColumn::FormColumn(QBoxLayout* parent, int stretch) : grid_(new QGridLayout) {
  // Layouts inside others would take over their spacing.
  const QStyle* style = QApplication::style();
  grid_->setVerticalSpacing(style->pixelMetric(QStyle::PM_LayoutVerticalSpacing));
  grid_->setHorizontalSpacing(style->pixelMetric(QStyle::PM_LayoutHorizontalSpacing));
  grid_->setColumnStretch(1, 1);
  auto* column = new QVBoxLayout;
  column->setSpacing(0);
  column->addLayout(grid_);
  column->addStretch(1);
  parent->addLayout(column, stretch);
}

void FormColumn::row(TextKey label, QWidget* field) {
  QLabel* text = plain_label(text_with_mnemonic(label) + QLatin1Char(':'));
  set_buddy(text, first_field(field));
  row(text, field);
}

void FormColumn::row(QWidget* lead, QWidget* field) {
  if (const auto* button = qobject_cast<QAbstractButton*>(lead)) {
    // Who chooses it means to type next. The field is switched on by the choice, so it is looked for afterwards.
    QWidget* target = first_field(field);
    const auto go_on = [button, target] {
      if (button->isChecked()) target->setFocus(Qt::OtherFocusReason);
    };
    QObject::connect(button, &QAbstractButton::clicked, target, go_on, Qt::QueuedConnection);
  }
  grid_->addLayout(indented(lead), next_, 0);
  grid_->addWidget(field, next_++, 1);
}

void FormColumn::row(QWidget* widget) {
  grid_->addLayout(indented(widget), next_++, 0, 1, 2);
}

void FormColumn::indent() {
  const QStyle* style = QApplication::style();
  indent_ =
      style->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) + style->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
}

QLayout* FormColumn::indented(QWidget* widget) const {
  auto* box = new QHBoxLayout;
  box->setContentsMargins(indent_, 0, 0, 0);
  box->addWidget(widget);
  return box;
}

namespace {

class ExampleLine final : public QLabel {
 public:
  ExampleLine(Method method, WindowModel& model) : method_(method), model_(model) {
    setObjectName(QStringLiteral("example"));
    setTextFormat(Qt::PlainText);
    setForegroundRole(QPalette::PlaceholderText);
    // A long name is cut off rather than widening the window.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    observer_ = model_.add_observer([this](ChangedSet changed) {
      if (has(changed, Changed::rows) || has(changed, Changed::state)) refresh();
    });
    refresh();
  }
  ~ExampleLine() override { model_.remove_observer(observer_); }

 private:
  void refresh() {
    if (selected_method(model_.values()) != method_) return;
    const FileList* files = model_.state().isExecuting ? nullptr : &model_.files();
    const NameExample example = name_example(model_.values(), files, model_.now());
    const std::string after = example.problem.empty() ? in_sentence(example.after) : example.problem;
    setText(qt_text(localized_format("EXAMPLELINE", in_sentence(example.before), after)));
    setToolTip(text());
  }

  Method method_;
  WindowModel& model_;
  std::uint32_t observer_ = 0;
};

}  // namespace

PanelFrame::PanelFrame(Method method, QWidget* parent)
    : method_(method), widget_(new PanelBody(parent)), rows_(new QVBoxLayout(widget_)) {
  widget_->setObjectName(QStringLiteral("methodPanel%1").arg(tab_of(method)));
  // On a wide screen a field is not drawn away from its label.
  widget_->setMaximumWidth(widget_->fontMetrics().height() * 72);
}

void PanelFrame::head(QWidget* row) {
  rows_->addWidget(row);
}

QWidget* PanelFrame::widget() const {
  return widget_;
}

QBoxLayout* PanelFrame::columns() {
  if (columns_ == nullptr) {
    columns_ = new QBoxLayout(QBoxLayout::LeftToRight);
    rows_->addLayout(columns_);
    widget_->set_columns(columns_);
  }
  return columns_;
}

void PanelFrame::foot(WindowModel& model) {
  rows_->addStretch(1);
  rows_->addWidget(new ExampleLine(method_, model));
}

}  // namespace brindle
