#pragma once

// The selection of a table of a million rows. The truth is a set of rows; the base class's ranges, which views search
// one by one for every cell they paint, are kept for the rows in sight alone. So `selection()`, `isSelected()` and the
// like answer for these, and `rows()` for all. Main thread.

#include <QItemSelectionModel>

#include "list/row_set.h"

namespace brindle {

class RowSelection final : public QItemSelectionModel {
  Q_OBJECT

 public:
  using QItemSelectionModel::QItemSelectionModel;
  using QItemSelectionModel::select;

  const RowSet& rows() const { return rows_; }
  void set_rows(RowSet rows);
  /// The rows that can be seen, to be told before they are painted or clicked.
  void set_sight(RowRange sight);

  /// Whole rows, whatever the columns.
  void select(const QItemSelection& selection, SelectionFlags command) override;
  void clear() override;
  void reset() override;

 signals:
  void rows_changed();

 private:
  void show_rows();

  RowSet rows_;
  // What a drag or a key with Shift extends is not settled before it ends.
  RowSet settled_;
  std::vector<RowRange> pending_;
  SelectionFlags pending_command_ = NoUpdate;
  RowRange sight_;
};

}  // namespace brindle
