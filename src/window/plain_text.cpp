#include "window/plain_text.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>

namespace brindle {
namespace {

class Plainness final : public QObject {
 public:
  using QObject::QObject;

 protected:
  // A tooltip's label is polished before it is told its text.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Polish) return false;
    auto* label = qobject_cast<QLabel*>(watched);
    if (label != nullptr && label->textFormat() != Qt::PlainText) label->setTextFormat(Qt::PlainText);
    return false;
  }
};

}  // namespace

QLabel* plain_label(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* plain_label(const QString& text, QWidget* parent) {
  QLabel* label = plain_label(parent);
  label->setText(text);
  return label;
}

void make_plain(QWidget& dialog) {
  for (QLabel* label : dialog.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
}

void show_plain_text_only() {
  qApp->installEventFilter(new Plainness(qApp));
}

}  // namespace brindle
