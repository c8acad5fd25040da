#include "window/row_selection.h"

#include <QSignalBlocker>
#include <algorithm>
#include <utility>

namespace brindle {
namespace {

using Flags = QItemSelectionModel::SelectionFlags;

std::vector<RowRange> ranges_of(const QItemSelection& selection) {
  std::vector<RowRange> ranges;
  for (const QItemSelectionRange& range : selection) {
    if (range.isValid())
      ranges.push_back({static_cast<std::size_t>(range.top()), static_cast<std::size_t>(range.bottom()) + 1});
  }
  return ranges;
}

// Columns that have been moved make several ranges of the same rows: each row counts once.
std::vector<RowRange> united(std::vector<RowRange> ranges) {
  std::ranges::sort(ranges, {}, &RowRange::first);
  std::vector<RowRange> result;
  for (const RowRange range : ranges) {
    if (result.empty() || range.first > result.back().last) {
      result.push_back(range);
    } else {
      result.back().last = std::max(result.back().last, range.last);
    }
  }
  return result;
}

void apply(const std::vector<RowRange>& ranges, Flags command, RowSet& rows) {
  for (const RowRange range : ranges) {
    if (command & QItemSelectionModel::Toggle) {
      rows.toggle(range);
    } else if (command & QItemSelectionModel::Deselect) {
      rows.erase(range);
    } else {
      rows.insert(range);
    }
  }
}

}  // namespace

void RowSelection::set_rows(RowSet rows) {
  pending_.clear();
  settled_ = rows;
  rows_ = std::move(rows);
  show_rows();
  emit rows_changed();
}

void RowSelection::set_sight(RowRange sight) {
  if (sight == sight_) return;
  sight_ = sight;
  show_rows();
}

void RowSelection::select(const QItemSelection& selection, SelectionFlags command) {
  if (command == NoUpdate) return;
  if (command & Clear) {
    settled_.clear();
    pending_.clear();
  }
  if (!(command & Current)) apply(std::exchange(pending_, {}), pending_command_, settled_);
  if (command & (Select | Deselect | Toggle)) {
    pending_ = united(ranges_of(selection));
    pending_command_ = command;
  }
  RowSet rows = settled_;
  apply(pending_, pending_command_, rows);
  if (rows == rows_) return;
  rows_ = std::move(rows);
  show_rows();
  emit rows_changed();
}

// Brings the base class's ranges up to the rows in sight.
void RowSelection::show_rows() {
  QItemSelection shown;
  if (model() != nullptr) {
    const std::size_t last = std::min(sight_.last, static_cast<std::size_t>(model()->rowCount()));
    for (const RowRange range : rows_.ranges({sight_.first, last})) {
      shown.append({model()->index(static_cast<int>(range.first), 0),
                    model()->index(static_cast<int>(range.last) - 1, model()->columnCount() - 1)});
    }
  }
  QItemSelectionModel::select(shown, ClearAndSelect);
}

void RowSelection::clear() {
  select(QItemSelection(), Clear);
  clearCurrentIndex();
}

// The model was reset: nobody is told.
void RowSelection::reset() {
  pending_.clear();
  settled_.clear();
  rows_.clear();
  const QSignalBlocker blocker(this);
  QItemSelectionModel::select(QItemSelection(), Clear);
  clearCurrentIndex();
}

}  // namespace brindle
