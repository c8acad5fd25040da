#include "window/flow_layout.h"

#include <QStyle>
#include <QWidget>
#include <algorithm>

namespace brindle {

FlowLayout::FlowLayout(QWidget* parent) : QLayout(parent) {
  setContentsMargins(0, 0, 0, 0);
  setSpacing(parent->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, parent));
}

void FlowLayout::addItem(QLayoutItem* item) {
  items_.emplace_back(item);
}

QLayoutItem* FlowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
  if (itemAt(index) == nullptr) return nullptr;
  QLayoutItem* item = items_[static_cast<std::size_t>(index)].release();
  items_.erase(items_.begin() + index);
  return item;
}

QSize FlowLayout::sizeHint() const {
  QSize size;
  for (const auto& item : items_) {
    const QSize hint = item->sizeHint();
    size = {size.width() + hint.width() + (size.isEmpty() ? 0 : spacing()), std::max(size.height(), hint.height())};
  }
  return size;
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const auto& item : items_) size = size.expandedTo(item->minimumSize());
  return size;
}

void FlowLayout::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  lay_out(rect, true);
}

int FlowLayout::lay_out(const QRect& rect, bool moves) const {
  QPoint at = rect.topLeft();
  int line_height = 0;
  for (const auto& item : items_) {
    const QSize size = item->sizeHint();
    if (at.x() > rect.left() && at.x() + size.width() > rect.right() + 1) {
      at = {rect.left(), at.y() + line_height + spacing()};
      line_height = 0;
    }
    if (moves) item->setGeometry({at, size});
    at.rx() += size.width() + spacing();
    line_height = std::max(line_height, size.height());
  }
  return at.y() + line_height - rect.top();
}

}  // namespace brindle
