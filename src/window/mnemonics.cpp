#include "window/mnemonics.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLabel>
#include <QMenuBar>
#include <QSet>
#include <functional>
#include <map>
#include <utility>
#include <vector>

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
  for (const QLabel* label : window->findChildren<QLabel*>()) {
    if (label->buddy() != nullptr && !panel->isAncestorOf(label) && label->isVisibleTo(window))
      add_letter(label->text(), letters);
  }
  return letters;
}

// Where a text may be marked: letters at the start of words first.
std::vector<qsizetype> places_in(const QString& text) {
  std::vector<qsizetype> places;
  for (const bool at_start : {true, false}) {
    for (qsizetype i = 0; i < text.size(); ++i) {
      const bool starts = i == 0 || !text[i - 1].isLetter();
      if (starts == at_start && text[i].isLetter()) places.push_back(i);
    }
  }
  return places;
}

// A letter for each text, of its own. Who comes first has the choice, yet gives way to another of its letters where a
// later text would get none.
class Letters {
 public:
  explicit Letters(QSet<QChar> taken) : taken_(std::move(taken)) {}

  void add(const QString& text) {
    texts_.push_back({text, places_in(text)});
    QSet<QChar> tried;
    find_letter(texts_.size() - 1, tried);
  }
  QString marked(std::size_t at) const {
    QString text = texts_[at].text;
    for (const auto& [letter, place] : owners_) {
      if (place.first == at) return text.insert(place.second, QLatin1Char('&'));
    }
    return text;
  }

 private:
  struct Text {
    QString text;
    std::vector<qsizetype> places;
  };

  // Goes no deeper than there are letters: each is tried once.
  bool find_letter(std::size_t at, QSet<QChar>& tried) {  // NOLINT(misc-no-recursion)
    for (const bool may_move : {false, true}) {
      for (const qsizetype place : texts_[at].places) {
        const QChar letter = texts_[at].text[place].toLower();
        const auto owner = owners_.find(letter);
        if (taken_.contains(letter) || (owner != owners_.end() && (!may_move || tried.contains(letter)))) continue;
        tried.insert(letter);
        if (owner != owners_.end() && !find_letter(owner->second.first, tried)) continue;
        owners_[letter] = {at, place};
        return true;
      }
    }
    return false;
  }

  QSet<QChar> taken_;
  std::vector<Text> texts_;
  std::map<QChar, std::pair<std::size_t, qsizetype>> owners_;
};

void mark(QWidget* panel) {
  Letters letters(letters_around(panel));
  std::vector<std::function<void(const QString&)>> targets;
  const auto add = [&](auto* widget) {
    const QString plain = QString(widget->text()).remove(QLatin1Char('&'));
    if (plain.isEmpty()) return;
    letters.add(plain);
    targets.emplace_back([widget](const QString& text) { widget->setText(text); });
  };
  for (QWidget* child : panel->findChildren<QWidget*>()) {
    if (auto* button = qobject_cast<QAbstractButton*>(child)) {
      add(button);
    } else if (auto* label = qobject_cast<QLabel*>(child); label != nullptr && label->buddy() != nullptr) {
      add(label);
    }
  }
  for (std::size_t i = 0; i < targets.size(); ++i) targets[i](letters.marked(i));
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
