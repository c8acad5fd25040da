// Dragging rows of the file table into order.

#include <QDrag>
#include <QDragMoveEvent>
#include <QLabel>
#include <QMimeData>
#include <QPainter>
#include <memory>

#include "app/order_controller.h"
#include "texts/string_table.h"
#include "window/file_table_model.h"
#include "window/file_table_view.h"
#include "window/text.h"

namespace brindle {
namespace {

constexpr auto rows_type = "application/x-brindle-rows";

QPixmap drag_picture(const QWidget& widget, std::size_t count) {
  const std::unique_ptr<QLabel> label(plain_label(qt_text(localized_format("ITEMCOUNT", count))));
  label->setFont(widget.font());
  label->setMargin(6);
  label->setFrameShape(QFrame::StyledPanel);
  label->setAutoFillBackground(true);
  label->adjustSize();
  return label->grab();
}

}  // namespace

void FileTableView::startDrag(Qt::DropActions /*actions*/) {
  if (!has_selection() || !model_->is_readable()) return;
  auto* drag = new QDrag(this);
  auto* rows = new QMimeData();
  rows->setData(QString::fromLatin1(rows_type), {});
  drag->setMimeData(rows);
  drag->setPixmap(drag_picture(*this, selected_count()));
  drag->exec(Qt::MoveAction);
  drop_row_.reset();
  viewport()->update();
}

// Files from elsewhere are left to the panel around the table.
void FileTableView::dragEnterEvent(QDragEnterEvent* event) {
  event->setAccepted(event->source() == this && event->mimeData()->hasFormat(QString::fromLatin1(rows_type)));
}

void FileTableView::dragMoveEvent(QDragMoveEvent* event) {
  if (event->source() != this) return event->ignore();
  QTableView::dragMoveEvent(event);  // scrolls at the edges
  drop_row_ = drop_row(event->position().toPoint());
  event->setDropAction(Qt::MoveAction);
  event->accept();
  viewport()->update();
}

void FileTableView::dragLeaveEvent(QDragLeaveEvent* event) {
  QTableView::dragLeaveEvent(event);
  drop_row_.reset();
  viewport()->update();
}

void FileTableView::dropEvent(QDropEvent* event) {
  if (event->source() != this) return event->ignore();
  drop_row_.reset();
  const int before = drop_row(event->position().toPoint());
  event->setDropAction(Qt::MoveAction);
  event->accept();
  order_.move_rows(selected_rows(), static_cast<std::size_t>(before));
}

// The row before which a drop at this place goes.
int FileTableView::drop_row(QPoint place) const {
  const int row = rowAt(place.y());
  if (row < 0) return model_->rowCount();
  const QRect area = visualRect(model_->index(row, name_column));
  return place.y() > area.center().y() ? row + 1 : row;
}

void FileTableView::paintEvent(QPaintEvent* event) {
  keep_in_sight();
  QTableView::paintEvent(event);
  if (!drop_row_ || model_->rowCount() == 0) return;
  const bool last = *drop_row_ >= model_->rowCount();
  const int row = last ? model_->rowCount() - 1 : *drop_row_;
  const int y = rowViewportPosition(row) + (last ? rowHeight(row) : 0);
  QPainter painter(viewport());
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawLine(0, y, viewport()->width(), y);
}

}  // namespace brindle
