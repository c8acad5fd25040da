#include "window/file_table_view.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QTimer>
#include <algorithm>
#include <memory>

#include "texts/string_table.h"
#include "window/columns.h"
#include "window/file_table_model.h"
#include "window/image_popup.h"
#include "window/name_delegate.h"
#include "window/plain_text.h"
#include "window/row_selection.h"
#include "window/text.h"

namespace brindle {
namespace {

constexpr auto rows_type = "application/x-brindle-rows";

// More names than anybody pastes.
constexpr std::size_t most_copied = 100'000;

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

FileTableView::FileTableView(BrindleAppController& app, QWidget* parent)
    : QTableView(parent),
      app_(app),
      model_(new FileTableModel(app, this)),
      picture_(new ImagePopup(app, this)),
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
  observer_ = app_.add_observer([this](ChangedSet changed) { follow(changed); });
}

FileTableView::~FileTableView() {
  app_.remove_observer(observer_);
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

void FileTableView::follow(ChangedSet changed) {
  if (app_.state().isExecuting) picture_->hide();
  if (has(changed, Changed::rows) || has(changed, Changed::state)) show_sort_order();
}

// Selection.

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
  app_.follow_rows({selection_->rows(), current});
}

// Called after a change of order, by whomever.
void FileTableView::follow_items() {
  if (!model_->is_readable()) return;
  // What was chosen while a job had the list stands, unless the job changed the order.
  if (std::exchange(order_version_, app_.files().order_version()) == app_.files().order_version())
    return hand_over_selection();
  const FollowedRows followed = app_.files().followed();
  if (followed.current) set_current_row(*followed.current, std::max(currentIndex().column(), 0));
  select_rows(followed.rows);
  if (std::exchange(scrolls_to_current_, false)) scrollTo(currentIndex());
}

void FileTableView::begin_list() {
  order_version_ = model_->is_readable() ? app_.files().order_version() : 0;
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

// Commands.

void FileTableView::remove_selected() {
  next_row_ = selected_rows().next(0);
  app_.RemoveFiles(selected_rows());
  if (model_->is_readable()) next_row_.reset();
}

void FileTableView::move_selected(Direction direction) {
  scrolls_to_current_ = true;
  if (direction == Direction::up) {
    app_.move_rows_up(selected_rows());
  } else {
    app_.move_rows_down(selected_rows());
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
    names << display_path_text(app_.files()[*row].name());
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
  const bool ascending = app_.sorted_column() != identifier || !app_.sorted_ascending();
  app_.sort_by_column(identifier, ascending);
}

void FileTableView::show_sort_order() {
  const auto sorted = std::ranges::find(columns, app_.sorted_column(), &Column::identifier);
  const bool shown = sorted != columns.end();
  horizontalHeader()->setSortIndicatorShown(shown);
  if (!shown) return;
  horizontalHeader()->setSortIndicator(static_cast<int>(sorted - columns.begin()),
                                       app_.sorted_ascending() ? Qt::AscendingOrder : Qt::DescendingOrder);
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
  const bool enters = !control && (key == Qt::Key_Return || key == Qt::Key_Enter);
  if (enters && state() != EditingState) return edit_new_name();
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

// Dragging rows into order.

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
  app_.move_rows(selected_rows(), static_cast<std::size_t>(before));
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
