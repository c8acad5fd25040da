#pragma once

// The file table: keys, dragging rows into order, sorting by a click on a header, and a selection that stays with its
// items. Drops of files are the panel's around it. Main thread.

#include <QTableView>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/window_model.h"

class QMenu;

namespace brindle {

class BrindleAppController;
class ListController;
class OrderController;
class FileTableModel;
class ImagePopup;
class RowSelection;

class FileTableView final : public QTableView {
  Q_OBJECT

 public:
  enum class Direction : std::uint8_t { up, down };

  FileTableView(BrindleAppController& app, QWidget* parent);
  ~FileTableView() override;

  FileTableModel& file_model() const { return *model_; }

  bool has_selection() const;
  std::size_t selected_count() const;
  const RowSet& selected_rows() const;
  void select_rows(RowSet rows);

  void remove_selected();
  void move_selected(Direction direction);
  void edit_new_name();
  void copy_names();
  void toggle_picture();
  /// Sorts by a column of columns.h, the other way round when the list is in its order.
  void sort_by(int column);

  bool is_column_shown(int column) const { return !isColumnHidden(column); }
  void show_column(int column, bool shown);

  /// Fills the menu that a click with the other button opens.
  void set_context_menu(std::function<void(QMenu&)> fill) { fill_context_menu_ = std::move(fill); }

 signals:
  void selection_changed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;
  void startDrag(Qt::DropActions actions) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void show_change(ChangedSet changed);
  void set_up_header();
  void apply_metrics();
  void hand_over_selection();
  void follow_items();
  void begin_list();
  void keep_in_sight();
  void show_sort_order();
  void set_current_row(std::size_t row, int column);
  int drop_row(QPoint place) const;
  void header_menu(QPoint place);
  void begin_hover();

  WindowModel& window_model_;
  ListController& list_commands_;
  OrderController& order_;
  FileTableModel* model_;
  ImagePopup* picture_;
  std::uint32_t observer_ = 0;
  std::uint64_t order_version_ = 0;      // that the selection belongs to
  bool scrolls_to_current_ = false;      // when the order has changed
  std::optional<std::size_t> next_row_;  // to be selected when the removed ones are gone
  std::optional<int> drop_row_;          // where dragged rows would go, while they are dragged
  RowSelection* selection_;
  QTimer* hover_timer_;
  int hovered_row_ = -1;
  std::function<void(QMenu&)> fill_context_menu_;
};

}  // namespace brindle
