#pragma once

// Draws the new-name column: what a renaming changes is set off, statuses have their colours; and edits one new name.

#include <QString>
#include <QStyledItemDelegate>

namespace brindle {

class NameDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
};

// What of a new name is new.

/// UTF-16 units [start, end) of the new name; empty when nothing was added.
struct ChangedPart {
  qsizetype start = 0;
  qsizetype end = 0;
};

/// What lies between the beginning and the end that both names have in common, in whole characters as people see them.
/// Linear in the names' lengths.
ChangedPart changed_part(const QString& old_name, const QString& new_name);

}  // namespace brindle
