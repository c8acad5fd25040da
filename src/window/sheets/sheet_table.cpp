#include "window/sheets/sheet_table.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <utility>

#include "window/text.h"

namespace brindle {

SheetTable::SheetTable(std::string_view name, std::string_view accessible_name, std::vector<Column> columns)
    : columns_(std::move(columns)) {
  setObjectName(qt_text(name));
  setAccessibleName(localized_text(accessible_name));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setAlternatingRowColors(true);
  setTextElideMode(Qt::ElideMiddle);
  QStringList titles;
  for (const Column& column : columns_) titles << (column.title.empty() ? QString() : localized_text(column.title));
  setHeaderLabels(titles);
  setHeaderHidden(titles.join(QString()).isEmpty());
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(0, QHeaderView::Stretch);
  for (int i = 1; i < columnCount(); ++i) header()->setSectionResizeMode(i, QHeaderView::ResizeToContents);
  header()->setSectionsMovable(false);
  setMinimumHeight(fontMetrics().height() * 12);
  connect(this, &QTreeWidget::itemSelectionChanged, this, [this] {
    const QList<QTreeWidgetItem*> items = selectedItems();
    if (!selected) return;
    if (items.isEmpty()) return selected(std::nullopt);
    selected(static_cast<std::size_t>(indexOfTopLevelItem(items.front())));
  });
  connect(header(), &QHeaderView::sortIndicatorChanged, this, [this](int column, Qt::SortOrder order) {
    if (sorted) sorted(columns_.at(static_cast<std::size_t>(column)).identifier, order == Qt::AscendingOrder);
  });
}

void SheetTable::set_empty_text(std::string_view key) {
  empty_text_ = localized_text(key);
}

// With nothing selected, the first step of the keyboard is to the row that it is at.
void SheetTable::keyPressEvent(QKeyEvent* event) {
  const bool steps = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
  if (steps && selectedItems().isEmpty() && currentItem() != nullptr) return currentItem()->setSelected(true);
  QTreeWidget::keyPressEvent(event);
}

void SheetTable::paintEvent(QPaintEvent* event) {
  QTreeWidget::paintEvent(event);
  if (topLevelItemCount() > 0 || empty_text_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const int gap = fontMetrics().height();
  painter.drawText(viewport()->rect().adjusted(gap, gap, -gap, -gap), Qt::AlignCenter | Qt::TextWordWrap, empty_text_);
}

void SheetTable::show_sorted_by(int column, bool ascending) {
  const QSignalBlocker silence(header());
  header()->setSectionsClickable(true);
  header()->setSortIndicatorShown(true);
  header()->setSortIndicator(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void SheetTable::show_rows(std::size_t count, const TextOf& text, std::optional<std::size_t> row) {
  const QSignalBlocker silence(this);
  std::vector<QStringList> rows(count);
  for (std::size_t i = 0; i < count; ++i) {
    for (const Column& column : columns_) rows[i] << in_one_line(qt_text(text(column.identifier, i)));
  }
  if (rows != shown_) fill(rows);
  shown_ = std::move(rows);
  QTreeWidgetItem* chosen = row ? topLevelItem(static_cast<int>(*row)) : nullptr;
  if (chosen == nullptr) return clearSelection();
  if (chosen->isSelected() && selectedItems().size() == 1) return;
  setCurrentItem(chosen);
}

void SheetTable::fill(const std::vector<QStringList>& rows) {
  clear();
  QList<QTreeWidgetItem*> items;
  items.reserve(static_cast<qsizetype>(rows.size()));
  for (const QStringList& texts : rows) {
    auto* item = new QTreeWidgetItem(texts);
    item->setToolTip(0, texts.front());
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (columns_[i].is_number) item->setTextAlignment(static_cast<int>(i), Qt::AlignRight | Qt::AlignVCenter);
    }
    items << item;
  }
  addTopLevelItems(items);
}

}  // namespace brindle
