#include "app/window/mnemonics.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLabel>
#include <QMenuBar>
#include <QSet>

namespace brindle {
namespace {

void add_letter(const QString& text, QSet<QChar>& letters) {
  const qsizetype at = text.indexOf(QLatin1Char('&'));
  if (at >= 0 && at + 1 < text.size()) letters.insert(text[at + 1].toLower());
}

// Those of the menus, and of what else is shown in the window.
QSet<QChar> letters_around(const QWidget* panel) {
  QSet<QChar> letters;
  const QWidget* window = panel->window();
  for (const QMenuBar* bar : window->findChildren<QMenuBar*>()) {
    for (const QAction* action : bar->actions()) add_letter(action->text(), letters);
  }
  for (const QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
    if (!panel->isAncestorOf(button) && button->isVisibleTo(window)) add_letter(button->text(), letters);
  }
  return letters;
}

// Letters at the start of words first.
QString with_mnemonic(const QString& text, QSet<QChar>& taken) {
  for (const bool at_start : {true, false}) {
    for (qsizetype i = 0; i < text.size(); ++i) {
      const bool starts = i == 0 || !text[i - 1].isLetter();
      if (starts != at_start || !text[i].isLetter() || taken.contains(text[i].toLower())) continue;
      taken.insert(text[i].toLower());
      QString marked = text;
      marked.insert(i, QLatin1Char('&'));
      return marked;
    }
  }
  return text;
}

void mark(QWidget* panel) {
  QSet<QChar> taken = letters_around(panel);
  for (QWidget* child : panel->findChildren<QWidget*>()) {
    if (auto* button = qobject_cast<QAbstractButton*>(child)) {
      const QString plain = QString(button->text()).remove(QLatin1Char('&'));
      if (!plain.isEmpty()) button->setText(with_mnemonic(plain, taken));
    } else if (auto* label = qobject_cast<QLabel*>(child); label != nullptr && label->buddy() != nullptr) {
      label->setText(with_mnemonic(label->text().remove(QLatin1Char('&')), taken));
    }
  }
}

class Marker final : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show) mark(static_cast<QWidget*>(watched));
    return false;
  }
};

}  // namespace

void give_mnemonics(QWidget* panel) {
  panel->installEventFilter(new Marker(panel));
}

}  // namespace brindle
