#include "app/window/file_table_view.h"

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
#include <unordered_set>

#include "app/string_table.h"
#include "app/window/columns.h"
#include "app/window/file_table_model.h"
#include "app/window/image_popup.h"
#include "app/window/name_delegate.h"
#include "app/window/text.h"

namespace brindle {
namespace {

constexpr auto rows_type = "application/x-brindle-rows";

// More items are not found again after a change of order.
constexpr std::size_t most_remembered = 200'000;

// More names than anybody pastes.
constexpr std::size_t most_copied = 100'000;

QPixmap drag_picture(const QWidget& widget, std::size_t count) {
  QLabel label(qt_text(localized_format("ITEMCOUNT", count)));
  label.setFont(widget.font());
  label.setMargin(6);
  label.setFrameShape(QFrame::StyledPanel);
  label.setAutoFillBackground(true);
  label.adjustSize();
  return label.grab();
}

}  // namespace

FileTableView::FileTableView(BrindleAppController& app, QWidget* parent)
    : QTableView(parent),
      app_(app),
      model_(new FileTableModel(app, this)),
      picture_(new ImagePopup(app, this)),
      hover_timer_(new QTimer(this)) {
  setObjectName(QStringLiteral("fileTable"));
  setAccessibleName(localized_text("LISTNAME"));
  setModel(model_);
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
  connect(model_, &FileTableModel::order_changed, this, [this] { restore_selection(); });
  connect(model_, &FileTableModel::modelReset, this, [this] {
    remembered_ = {};
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
  return selectionModel()->hasSelection();
}

std::size_t FileTableView::selected_count() const {
  std::size_t count = 0;
  for (const QItemSelectionRange& range : selectionModel()->selection())
    count += static_cast<std::size_t>(range.height());
  return count;
}

std::vector<std::size_t> FileTableView::selected_rows() const {
  std::vector<std::size_t> rows;
  rows.reserve(selected_count());
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(static_cast<std::size_t>(row));
  }
  std::ranges::sort(rows);
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

void FileTableView::select_rows(const std::vector<std::size_t>& sorted_rows) {
  QItemSelection selection;
  for (std::size_t i = 0; i < sorted_rows.size();) {
    std::size_t end = i + 1;
    while (end < sorted_rows.size() && sorted_rows[end] == sorted_rows[end - 1] + 1) ++end;
    const auto row = [&](std::size_t at) { return static_cast<int>(sorted_rows[at]); };
    selection.append({model_->index(row(i), 0), model_->index(row(end - 1), model_->columnCount() - 1)});
    i = end;
  }
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

// The inode stays when a file gets its new name; where the disk gave none, the place of the name in memory does.
std::uint64_t FileTableView::identity(std::size_t row) const {
  if (row >= app_.files().size()) return 0;
  const ItemRecord& item = app_.files()[row];
  if (item.inode != 0) return (item.inode << 20U) ^ item.folder;
  return reinterpret_cast<std::uintptr_t>(item.name_data) | 1U;  // NOLINT(cppcoreguidelines-pro-type-reinterpret-cast)
}

void FileTableView::remember_selection() {
  remembered_.rows.clear();
  remembered_.items.clear();
  remembered_.is_known = model_->is_readable() && selected_count() <= most_remembered;
  if (!remembered_.is_known) return;
  remembered_.rows = selected_rows();
  for (const std::size_t row : remembered_.rows) remembered_.items.push_back(identity(row));
}

// Called after a change of order, by whomever. What was selected by then is known by its items.
void FileTableView::restore_selection() {
  // What was selected while a job had the list is not known by its items; such a job leaves the order as it is.
  if (!model_->is_readable() || !remembered_.is_known) return;
  const std::size_t count = app_.files().size();
  const bool all = selected_count() == count;
  bool same = remembered_.rows == selected_rows();
  for (std::size_t i = 0; same && i < remembered_.rows.size(); ++i)
    same = remembered_.rows[i] < count && identity(remembered_.rows[i]) == remembered_.items[i];
  if (all || same) return;
  const std::unordered_set<std::uint64_t> wanted(remembered_.items.begin(), remembered_.items.end());
  std::vector<std::size_t> rows;
  std::optional<std::size_t> current;
  for (std::size_t row = 0; row < count; ++row) {
    const std::uint64_t item = identity(row);
    if (wanted.contains(item)) rows.push_back(row);
    if (remembered_.current == item) current = row;
  }
  if (current) set_current_row(*current, remembered_.current_column);
  select_rows(rows);
}

void FileTableView::set_current_row(std::size_t row, int column) {
  const QModelIndex index = model_->index(static_cast<int>(row), column);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

void FileTableView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  remember_selection();
  emit selection_changed();
}

void FileTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  remembered_.current.reset();
  if (current.isValid() && model_->is_readable()) {
    remembered_.current = identity(static_cast<std::size_t>(current.row()));
    remembered_.current_column = current.column();
  }
  if (picture_->isVisible() && current.isValid() && current.row() != previous.row())
    picture_->show_row(static_cast<std::size_t>(current.row()));
}

// Commands.

void FileTableView::remove_selected() {
  const std::vector<std::size_t> rows = selected_rows();
  app_.RemoveFiles(rows);
  if (rows.empty() || !model_->is_readable() || model_->rowCount() == 0) return;
  const std::size_t next = std::min(rows.front(), static_cast<std::size_t>(model_->rowCount() - 1));
  select_rows({next});
  set_current_row(next, name_column);
}

void FileTableView::move_selected(Direction direction) {
  const std::vector<std::size_t> rows = selected_rows();
  const int column = std::max(currentIndex().column(), 0);
  const auto places = direction == Direction::up ? app_.move_rows_up(rows) : app_.move_rows_down(rows);
  if (places.empty()) return;
  select_rows(places);
  set_current_row(direction == Direction::up ? places.front() : places.back(), column);
  scrollTo(currentIndex());
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
  for (const std::size_t row : selected_rows()) {
    if (names.size() == static_cast<qsizetype>(most_copied)) break;
    names << display_path_text(app_.files()[row].name());
  }
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
  const std::size_t selected = selected_count();
  if (selected > most_remembered && selected < app_.state().item_count) clearSelection();
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
  const auto places = app_.move_rows(selected_rows(), static_cast<std::size_t>(before));
  if (places.empty()) return;
  select_rows(places);
  set_current_row(places.front(), name_column);
}

// The row before which a drop at this place goes.
int FileTableView::drop_row(QPoint place) const {
  const int row = rowAt(place.y());
  if (row < 0) return model_->rowCount();
  const QRect area = visualRect(model_->index(row, name_column));
  return place.y() > area.center().y() ? row + 1 : row;
}

void FileTableView::paintEvent(QPaintEvent* event) {
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
