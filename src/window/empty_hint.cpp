#include "window/empty_hint.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "window/icons.h"
#include "window/mnemonics.h"
#include "window/plain_text.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

class HintPicture final : public QWidget {
 public:
  explicit HintPicture(QWidget* parent) : QWidget(parent), icon_(icon("hub")) {
    const int side = fontMetrics().height() * 3;
    setFixedSize(side, side);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setOpacity(0.55);
    icon_.paint(&painter, rect());
  }

 private:
  QIcon icon_;
};

}  // namespace

QWidget* make_empty_hint(QWidget* parent) {
  auto* hint = new QWidget(parent);
  hint->setObjectName(QStringLiteral("emptyHint"));
  hint->setBackgroundRole(QPalette::Base);
  hint->setAutoFillBackground(true);
  QLabel* title = plain_label(localized_text("HINTTITLE"), hint);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.4);
  title->setFont(large);
  title->setAlignment(Qt::AlignCenter);
  QLabel* text = plain_label(localized_text("HINTTEXT"), hint);
  text->setWordWrap(true);
  text->setAlignment(Qt::AlignCenter);
  auto* rows = new QVBoxLayout(hint);
  rows->setSpacing(spacing(*hint));
  rows->addStretch(2);
  rows->addWidget(new HintPicture(hint), 0, Qt::AlignHCenter);
  rows->addWidget(title);
  rows->addWidget(text);
  rows->addStretch(3);
  return hint;
}

void add_doors_to_hint(QWidget* hint, const QList<QAction*>& doors) {
  auto* row = new QHBoxLayout();
  row->setSpacing(spacing(*hint));
  row->addStretch();
  for (QAction* door : doors) {
    auto* button = new QPushButton(door->icon(), door->text(), hint);
    button->setObjectName(QStringLiteral("hint_") + door->objectName());
    QObject::connect(button, &QPushButton::clicked, door, &QAction::trigger);
    QObject::connect(door, &QAction::changed, button, [button, door] { button->setEnabled(door->isEnabled()); });
    row->addWidget(button);
  }
  row->addStretch();
  give_mnemonics(hint);
  auto* rows = static_cast<QVBoxLayout*>(hint->layout());  // NOLINT(cppcoreguidelines-pro-type-static-cast-downcast)
  rows->insertLayout(rows->count() - 1, row);
}

}  // namespace brindle
