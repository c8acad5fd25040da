#pragma once

// Draws the new-name column: what a renaming changes is set off, statuses have their colours; and edits one new name.

#include <QStyledItemDelegate>

namespace brindle {

class NameDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
};

}  // namespace brindle
