#include "window/keyboard.h"

#include <QKeyEvent>
#include <QLayout>
#include <QScrollArea>
#include <QSplitter>
#include <vector>

namespace brindle {
namespace {

// No deeper than widgets lie in each other.
void collect(QWidget& widget, std::vector<QWidget*>& stops);

void collect(const QLayout& layout, std::vector<QWidget*>& stops) {  // NOLINT(misc-no-recursion)
  for (int i = 0; i < layout.count(); ++i) {
    QLayoutItem* item = layout.itemAt(i);
    if (item->widget() != nullptr) collect(*item->widget(), stops);
    if (item->layout() != nullptr) collect(*item->layout(), stops);
  }
}

void collect(QWidget& widget, std::vector<QWidget*>& stops) {  // NOLINT(misc-no-recursion)
  if ((widget.focusPolicy() & Qt::TabFocus) != 0) stops.push_back(&widget);
  if (const auto* splitter = qobject_cast<QSplitter*>(&widget)) {
    for (int i = 0; i < splitter->count(); ++i) collect(*splitter->widget(i), stops);
  } else if (const auto* area = qobject_cast<QScrollArea*>(&widget)) {
    if (area->widget() != nullptr) collect(*area->widget(), stops);
  } else if (widget.layout() != nullptr) {
    collect(*widget.layout(), stops);
  }
}

}  // namespace

bool is_enter(const QKeyEvent& key) {
  return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

void order_tabs(QWidget& root) {
  std::vector<QWidget*> stops;
  collect(root, stops);
  for (std::size_t i = 1; i < stops.size(); ++i) QWidget::setTabOrder(stops[i - 1], stops[i]);
}

}  // namespace brindle
