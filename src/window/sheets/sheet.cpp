#include "window/sheets/sheet.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

// The toolkit's progress bars count in int.
constexpr int progress_steps = 10000;

}  // namespace

Sheet::Sheet(QWidget* parent, const char* name, const QString& title)
    : QDialog(parent), rows_(new QVBoxLayout), buttons_(new QDialogButtonBox) {
  setObjectName(QString::fromLatin1(name));
  setWindowTitle(title);
  setWindowModality(Qt::WindowModal);
  const int margin = spacing(*this) * 3 / 2;
  rows_->setSpacing(spacing(*this));
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(margin, margin, margin, margin);
  all->setSpacing(margin);
  all->addLayout(rows_, 1);
  all->addWidget(buttons_);
}

void Sheet::reject() {
  if (controller_ == nullptr) return QDialog::reject();
  controller_->sheetClosed();
}

QLabel* Sheet::add_hint(TextKey text) {
  QLabel* label = text_label(text);
  QPalette colours = label->palette();
  colours.setColor(QPalette::WindowText, quiet_colour(colours));
  label->setPalette(colours);
  label->setWordWrap(true);
  rows_->addWidget(label);
  return label;
}

QPushButton* Sheet::add_default_button(std::string_view name, TextKey text, std::function<void()> clicked) {
  QPushButton* button = sheet_button(name, text, std::move(clicked));
  buttons_->addButton(button, QDialogButtonBox::AcceptRole);
  button->setDefault(true);
  return button;
}

QPushButton* Sheet::add_action_button(std::string_view name, TextKey text, std::function<void()> clicked) {
  QPushButton* button = sheet_button(name, text, std::move(clicked));
  buttons_->addButton(button, QDialogButtonBox::ActionRole);
  return button;
}

QPushButton* Sheet::finish_buttons(TextKey close, std::function<void()> help) {
  QPushButton* closes = sheet_button("sheetClose", close, [this] { reject(); });
  buttons_->addButton(closes, QDialogButtonBox::RejectRole);
  if (!help) return closes;
  buttons_->addButton(sheet_button("sheetHelp", "SHEETHELP", help), QDialogButtonBox::HelpRole);
  auto* key = new QShortcut(QKeySequence::HelpContents, this);
  connect(key, &QShortcut::activated, this, std::move(help));
  return closes;
}

void Sheet::attach(SheetController& controller) {
  controller_ = &controller;
  controller.changed = [this] { show_state(); };
  controller.closed = [this] { accept(); };
  show_state();
}

QPushButton* sheet_button(std::string_view name, TextKey text, std::function<void()> clicked) {
  QPushButton* button = push_button(name, text, std::move(clicked));
  button->setAutoDefault(true);
  return button;
}

void add_key(QWidget& widget, QKeySequence::StandardKey key, std::function<void()> pressed) {
  auto* shortcut = new QShortcut(key, &widget);
  shortcut->setContext(Qt::WidgetShortcut);
  QObject::connect(shortcut, &QShortcut::activated, &widget, std::move(pressed));
}

QCheckBox* sheet_check(std::string_view name, TextKey text, bool checked) {
  auto* box = new QCheckBox(text_with_mnemonic(text));
  box->setObjectName(qt_text(name));
  box->setChecked(checked);
  return box;
}

QLineEdit* path_line(std::string_view name, TextKey accessible_name) {
  auto* line = new QLineEdit;
  line->setObjectName(qt_text(name));
  line->setAccessibleName(localized_text(accessible_name));
  line->setReadOnly(true);
  line->setMinimumWidth(line->fontMetrics().averageCharWidth() * 52);
  return line;
}

void show_path(QLineEdit* line, const std::string& path) {
  const QString text = path_text(path);
  if (line->text() == text) return;
  line->setText(text);
  line->setToolTip(in_one_line(text));
}

QProgressBar* sheet_progress(std::string_view name) {
  auto* bar = new QProgressBar;
  bar->setObjectName(qt_text(name));
  bar->setAccessibleName(localized_text("PROGRESSNAME"));
  bar->setTextVisible(false);
  bar->setMaximumHeight(bar->fontMetrics().height() * 2 / 3);
  QSizePolicy policy = bar->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  bar->setSizePolicy(policy);
  return bar;
}

void show_progress(QProgressBar* bar, bool runs, const WindowState& state) {
  bar->setVisible(runs);
  const bool known = state.isExecuting && state.total > 0;
  bar->setMaximum(known ? progress_steps : 0);
  if (known)
    bar->setValue(
        static_cast<int>(static_cast<double>(state.done) / static_cast<double>(state.total) * progress_steps));
}

}  // namespace brindle
