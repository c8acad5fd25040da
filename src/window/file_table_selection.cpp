// Which rows of the file table are selected, through whatever becomes of the list.

#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "app/order_controller.h"
#include "window/file_table_model.h"
#include "window/file_table_view.h"
#include "window/image_popup.h"
#include "window/row_selection.h"

namespace brindle {

bool FileTableView::has_selection() const {
  return !selection_->rows().empty();
}

std::size_t FileTableView::selected_count() const {
  return selection_->rows().count();
}

const RowSet& FileTableView::selected_rows() const {
  return selection_->rows();
}

void FileTableView::select_rows(RowSet rows) {
  keep_in_sight();
  selection_->set_rows(std::move(rows));
}

// The list takes the selection along wherever its items go.
void FileTableView::hand_over_selection() {
  std::optional<std::size_t> current;
  if (currentIndex().isValid()) current = static_cast<std::size_t>(currentIndex().row());
  order_.follow_rows({selection_->rows(), current});
}

// Called after a change of order, by whomever.
void FileTableView::follow_items() {
  if (!model_->is_readable()) return;
  // What was chosen while a job had the list stands, unless the job changed the order.
  if (std::exchange(order_version_, window_model_.files().order_version()) == window_model_.files().order_version())
    return hand_over_selection();
  const ChosenRows followed = window_model_.files().chosen();
  if (followed.current) set_current_row(*followed.current, std::max(currentIndex().column(), 0));
  select_rows(followed.rows);
  if (std::exchange(scrolls_to_current_, false)) scrollTo(currentIndex());
}

void FileTableView::begin_list() {
  order_version_ = model_->is_readable() ? window_model_.files().order_version() : 0;
  hand_over_selection();
  const std::optional<std::size_t> next = std::exchange(next_row_, std::nullopt);
  if (next && model_->rowCount() > 0) {
    const std::size_t row = std::min(*next, static_cast<std::size_t>(model_->rowCount() - 1));
    select_rows(RowSet({row}));
    set_current_row(row, name_column);
  }
  emit selection_changed();
}

// The selection is shown in the rows that can be seen.
void FileTableView::keep_in_sight() {
  const int first = std::max(rowAt(0), 0);
  const int last = rowAt(viewport()->height() - 1);
  const int end = last < 0 ? model_->rowCount() : last + 1;
  selection_->set_sight({static_cast<std::size_t>(first), static_cast<std::size_t>(std::max(end, first))});
}

void FileTableView::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  keep_in_sight();
}

void FileTableView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  keep_in_sight();
}

void FileTableView::mousePressEvent(QMouseEvent* event) {
  keep_in_sight();
  QTableView::mousePressEvent(event);
}

// Rows are what this list is about: Home and End are its first and its last one.
QModelIndex FileTableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (action == MoveHome || action == MoveEnd) modifiers |= Qt::ControlModifier;
  return QTableView::moveCursor(action, modifiers);
}

void FileTableView::set_current_row(std::size_t row, int column) {
  const QModelIndex index = model_->index(static_cast<int>(row), column);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

void FileTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  hand_over_selection();
  if (picture_->isVisible() && current.isValid() && current.row() != previous.row())
    picture_->show_row(static_cast<std::size_t>(current.row()));
}

}  // namespace brindle
