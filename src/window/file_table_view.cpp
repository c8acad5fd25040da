#include "window/file_table_view.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMimeData>
#include <QTimer>
#include <algorithm>
#include <memory>

#include "app/brindle_app_controller.h"
#include "app/list_controller.h"
#include "app/order_controller.h"
#include "texts/string_table.h"
#include "window/file_table_model.h"
#include "window/image_popup.h"
#include "window/keyboard.h"
#include "window/name_delegate.h"
#include "window/row_selection.h"
#include "window/text.h"

namespace brindle {
namespace {

// More names than anybody pastes.
constexpr std::size_t most_copied = 100'000;

}  // namespace

FileTableView::FileTableView(BrindleAppController& app, QWidget* parent)
    : QTableView(parent),
      window_model_(app.model()),
      list_commands_(app.list()),
      order_(app.order()),
      model_(new FileTableModel(app, this)),
      picture_(new ImagePopup(app.model(), this)),
      selection_(new RowSelection(model_, this)),
      hover_timer_(new QTimer(this)) {
  setObjectName(QStringLiteral("fileTable"));
  setAccessibleName(localized_text("LISTNAME"));
  setModel(model_);
  const std::unique_ptr<QItemSelectionModel> first(selectionModel());
  setSelectionModel(selection_);
  setItemDelegateForColumn(new_name_column, new NameDelegate(this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed);
  setShowGrid(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setTextElideMode(Qt::ElideMiddle);
  setHorizontalScrollMode(ScrollPerPixel);
  setTabKeyNavigation(false);
  setFrameShape(NoFrame);
  setDragEnabled(true);
  setAcceptDrops(true);
  setDropIndicatorShown(false);
  setMouseTracking(true);
  set_up_header();
  apply_metrics();
  hover_timer_->setSingleShot(true);
  hover_timer_->callOnTimeout(this, [this] { begin_hover(); });
  connect(model_, &FileTableModel::order_changed, this, [this] { follow_items(); });
  connect(model_, &FileTableModel::modelReset, this, [this] { begin_list(); });
  connect(selection_, &RowSelection::rows_changed, this, [this] {
    hand_over_selection();
    emit selection_changed();
  });
  observer_ = window_model_.add_observer([this](ChangedSet changed) { show_change(changed); });
}

FileTableView::~FileTableView() {
  window_model_.remove_observer(observer_);
}

void FileTableView::set_up_header() {
  QHeaderView* header = horizontalHeader();
  header->setSectionsMovable(true);
  header->setSectionsClickable(true);
  header->setHighlightSections(false);
  header->setStretchLastSection(true);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(header, &QHeaderView::sectionClicked, this, &FileTableView::sort_by);
  connect(header, &QHeaderView::customContextMenuRequested, this, [this](QPoint place) { header_menu(place); });
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  for (int column = 0; column < static_cast<int>(columns.size()); ++column)
    setColumnHidden(column, !columns.at(static_cast<std::size_t>(column)).is_shown);
}

// All that depends on the font.
void FileTableView::apply_metrics() {
  const QFontMetrics metrics = fontMetrics();
  const int side = metrics.height() + 2;
  model_->set_icons(side, devicePixelRatioF());
  setIconSize({side, side});
  verticalHeader()->setDefaultSectionSize(side + metrics.height() / 2);
  for (int column = 0; column < static_cast<int>(columns.size()); ++column)
    setColumnWidth(column, columns.at(static_cast<std::size_t>(column)).characters * metrics.averageCharWidth());
  horizontalHeader()->setSectionResizeMode(icon_column, QHeaderView::Fixed);
  horizontalHeader()->resizeSection(icon_column, side + metrics.height());
}

void FileTableView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) apply_metrics();
}

void FileTableView::show_change(ChangedSet changed) {
  if (window_model_.state().isExecuting) picture_->hide();
  if (has(changed, Changed::rows) || has(changed, Changed::state)) show_sort_order();
}

// Commands.

void FileTableView::remove_selected() {
  next_row_ = selected_rows().next(0);
  list_commands_.RemoveFiles(selected_rows());
  if (model_->is_readable()) next_row_.reset();
}

void FileTableView::move_selected(Direction direction) {
  scrolls_to_current_ = true;
  if (direction == Direction::up) {
    order_.move_rows_up(selected_rows());
  } else {
    order_.move_rows_down(selected_rows());
  }
  if (model_->is_readable()) scrolls_to_current_ = false;
}

void FileTableView::edit_new_name() {
  if (!currentIndex().isValid() || !model_->is_readable()) return;
  const QModelIndex index = currentIndex().siblingAtColumn(new_name_column);
  setColumnHidden(new_name_column, false);
  setFocus();
  setCurrentIndex(index);
  edit(index);
}

void FileTableView::copy_names() {
  QStringList names;
  for (auto row = selected_rows().next(0); row && names.size() < static_cast<qsizetype>(most_copied);
       row = selected_rows().next(*row + 1))
    names << display_path_text(window_model_.files()[*row].name());
  if (!names.isEmpty()) QApplication::clipboard()->setText(names.join(u'\n'));
}

void FileTableView::toggle_picture() {
  if (picture_->isVisible()) {
    picture_->hide();
  } else if (currentIndex().isValid() && model_->is_readable()) {
    picture_->show_row(static_cast<std::size_t>(currentIndex().row()));
  }
}

void FileTableView::sort_by(int column) {
  if (column == icon_column) return;
  const std::string_view identifier = columns.at(static_cast<std::size_t>(column)).identifier;
  const bool ascending = window_model_.sorting().column != identifier || !window_model_.sorting().ascending;
  order_.sort_by_column(identifier, ascending);
}

void FileTableView::show_sort_order() {
  const auto sorted = std::ranges::find(columns, window_model_.sorting().column, &Column::identifier);
  const bool shown = sorted != columns.end();
  horizontalHeader()->setSortIndicatorShown(shown);
  if (!shown) return;
  horizontalHeader()->setSortIndicator(static_cast<int>(sorted - columns.begin()),
                                       window_model_.sorting().ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void FileTableView::show_column(int column, bool shown) {
  setColumnHidden(column, !shown);
}

void FileTableView::header_menu(QPoint place) {
  QMenu menu(this);
  for (int column = 1; column < static_cast<int>(columns.size()); ++column) {
    QAction* action = menu.addAction(model_->headerData(column, Qt::Horizontal).toString());
    action->setCheckable(true);
    action->setChecked(is_column_shown(column));
    connect(action, &QAction::toggled, this, [this, column](bool shown) { show_column(column, shown); });
  }
  menu.exec(horizontalHeader()->mapToGlobal(place));
}

// Keys and mouse.

void FileTableView::keyPressEvent(QKeyEvent* event) {
  const bool control = event->modifiers() & Qt::ControlModifier;
  const int key = event->key();
  if (!control && (key == Qt::Key_Delete || key == Qt::Key_Backspace)) return remove_selected();
  if (control && key == Qt::Key_Up) return move_selected(Direction::up);
  if (control && key == Qt::Key_Down) return move_selected(Direction::down);
  if (!control && key == Qt::Key_Space) return toggle_picture();
  if (key == Qt::Key_Escape && picture_->isVisible()) return picture_->hide();
  // The field of a name that is being typed leaves Enter to the list, having taken the name.
  if (!control && is_enter(*event) && state() != EditingState) return edit_new_name();
  QTableView::keyPressEvent(event);
}

// The row where the keyboard is shows it at its name.
void FileTableView::focusInEvent(QFocusEvent* event) {
  if (!currentIndex().isValid() && model_->rowCount() > 0) set_current_row(0, name_column);
  QTableView::focusInEvent(event);
}

void FileTableView::contextMenuEvent(QContextMenuEvent* event) {
  if (!fill_context_menu_) return;
  QMenu menu(this);
  fill_context_menu_(menu);
  const bool keyboard = event->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid();
  menu.exec(keyboard ? viewport()->mapToGlobal(visualRect(currentIndex()).center()) : event->globalPos());
}

void FileTableView::mouseMoveEvent(QMouseEvent* event) {
  QTableView::mouseMoveEvent(event);
  const QModelIndex index = indexAt(event->pos());
  const int row =
      index.isValid() && index.column() == icon_column && event->buttons() == Qt::NoButton ? index.row() : -1;
  if (row == hovered_row_) return;
  if (hovered_row_ >= 0) picture_->hide();
  hovered_row_ = row;
  if (row >= 0) {
    hover_timer_->start(400);
  } else {
    hover_timer_->stop();
  }
}

// The picture bears the name already.
bool FileTableView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::ToolTip && picture_->isVisible()) return true;
  return QTableView::viewportEvent(event);
}

void FileTableView::leaveEvent(QEvent* event) {
  QTableView::leaveEvent(event);
  hover_timer_->stop();
  if (std::exchange(hovered_row_, -1) >= 0) picture_->hide();
}

void FileTableView::begin_hover() {
  if (hovered_row_ >= 0 && hovered_row_ < model_->rowCount() && model_->is_readable())
    picture_->show_row_when_picture(static_cast<std::size_t>(hovered_row_));
}

}  // namespace brindle
