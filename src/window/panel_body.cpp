#include "window/panel_body.h"

#include <QBoxLayout>
#include <QEvent>
#include <QStyle>

namespace brindle {

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

}  // namespace brindle
