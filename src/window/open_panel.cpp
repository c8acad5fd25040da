#include "window/open_panel.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QThreadPool>
#include <QToolButton>
#include <QTreeView>
#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/file_name.h"
#include "platform/path.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"
#include "window/folder_model.h"
#include "window/icons.h"
#include "window/mnemonics.h"
#include "window/places.h"
#include "window/plain_text.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

constexpr int path_role = Qt::UserRole;

std::string joined(const std::string& folder, std::string_view name) {
  return (folder == "/" ? std::string() : folder) + '/' + std::string(name);
}

// Typed paths are relative to the folder shown; "~" is the home folder.
std::string typed_path(const QString& text, const std::string& folder) {
  std::string path = path_bytes(text);
  if (path == "~" || path.starts_with("~/")) path.replace(0, 1, path_bytes(QDir::homePath()));
  if (!path.starts_with('/')) path = joined(folder, path);
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

QToolButton* tool_button(std::string_view icon_name, const char* name, std::string_view text) {
  auto* button = new QToolButton;
  button->setObjectName(QString::fromLatin1(name));
  button->setIcon(icon(icon_name));
  button->setAutoRaise(true);
  button->setToolTip(localized_text(text));
  button->setAccessibleName(localized_text(text));
  return button;
}

QLineEdit* field(const char* name, std::string_view text) {
  auto* line = new QLineEdit;
  line->setObjectName(QString::fromLatin1(name));
  line->setAccessibleName(localized_text(text));
  return line;
}

bool is_enter(const QKeyEvent& key) {
  return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

}  // namespace

OpenPanel::OpenPanel(QWidget* parent, const OpenRequest& request, OpenPanelMemory& memory)
    : QDialog(parent),
      request_(request),
      memory_(memory),
      model_(new FolderModel(this)),
      places_(new QListWidget),
      table_(new QTreeView),
      path_(field("panelPath", "PANELPATH")),
      filter_(field("panelFilter", "PANELFILTER")),
      hidden_(new QCheckBox(localized_text("PANELHIDDEN"))),
      back_(tool_button("back", "panelBack", "PANELBACK")),
      up_(tool_button("move_up", "panelUp", "PANELUP")),
      status_(plain_label()),
      choose_(new QPushButton(localized_text("PANELCHOOSE"))) {
  setObjectName(QStringLiteral("openPanel"));
  setWindowTitle(title_text(request_.title));
  setWindowModality(Qt::WindowModal);
  make_places();
  make_table();
  make_fields();
  lay_out();
  give_mnemonics(this);
  adopt_filter();
  const std::string& begin = request_.folder.empty() ? memory_.folder : request_.folder;
  go_to(begin.empty() ? path_bytes(QDir::homePath()) : begin);
  table_->setFocus();
}

OpenPanel::~OpenPanel() {
  if (reading_) *reading_ = true;
}

void OpenPanel::make_places() {
  places_->setObjectName(QStringLiteral("panelPlaces"));
  places_->setAccessibleName(localized_text("PANELPLACES"));
  places_->setTextElideMode(Qt::ElideMiddle);
  places_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  std::vector<Place> places = find_places();
  for (const std::string& folder : memory_.recent) {
    const std::size_t name = folder == "/" ? 0 : folder.rfind('/') + 1;
    places.push_back({"recent", utf8(in_one_line(path_text(std::string_view(folder).substr(name)))), folder});
  }
  for (const Place& place : places) {
    auto* item = new QListWidgetItem(icon(place.icon), in_one_line(qt_text(place.title)), places_);
    item->setData(path_role, path_text(place.path));
    item->setToolTip(in_one_line(path_text(place.path)));
  }
  connect(places_, &QListWidget::itemClicked, this, [this] { go_to_place(); });
  places_->installEventFilter(this);
}

void OpenPanel::make_table() {
  table_->setObjectName(QStringLiteral("panelTable"));
  table_->setAccessibleName(localized_text("PANELENTRIES"));
  table_->setModel(model_);
  table_->setRootIsDecorated(false);
  table_->setUniformRowHeights(true);
  table_->setAllColumnsShowFocus(true);
  table_->setAlternatingRowColors(true);
  table_->setTextElideMode(Qt::ElideMiddle);
  table_->setSelectionMode(request_.multiple ? QTreeView::ExtendedSelection : QTreeView::SingleSelection);
  const int digit = fontMetrics().averageCharWidth();
  QHeaderView* header = table_->header();
  header->setStretchLastSection(false);
  header->setSectionsMovable(false);
  header->setSectionResizeMode(FolderModel::name_column, QHeaderView::Stretch);
  header->resizeSection(FolderModel::size_column, digit * 13);
  header->resizeSection(FolderModel::modified_column, digit * 20);
  table_->sortByColumn(FolderModel::name_column, Qt::AscendingOrder);
  table_->setSortingEnabled(true);
  table_->installEventFilter(this);
  connect(table_, &QTreeView::doubleClicked, this, [this](const QModelIndex& index) { open_row(index.row()); });
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { show_selection(); });
  connect(model_, &QAbstractItemModel::modelReset, this, [this] { show_selection(); });
}

void OpenPanel::make_fields() {
  status_->setObjectName(QStringLiteral("panelStatus"));
  status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  filter_->setPlaceholderText(localized_text("PANELFILTER"));
  filter_->setClearButtonEnabled(true);
  hidden_->setObjectName(QStringLiteral("panelHidden"));
  hidden_->setChecked(memory_.shows_hidden);
  choose_->setObjectName(QStringLiteral("panelChoose"));
  choose_->setDefault(true);
  path_->installEventFilter(this);
  filter_->installEventFilter(this);
  connect(filter_, &QLineEdit::textChanged, this, [this] { adopt_filter(); });
  connect(hidden_, &QCheckBox::toggled, this, [this] { adopt_filter(); });
  connect(back_, &QToolButton::clicked, this, [this] { go_back(); });
  connect(up_, &QToolButton::clicked, this, [this] { go_up(); });
  add_shortcut(QKeySequence(QStringLiteral("Alt+Up")), &OpenPanel::go_up);
  add_shortcut(QKeySequence(QStringLiteral("Alt+Left")), &OpenPanel::go_back);
  add_shortcut(QKeySequence(QStringLiteral("Alt+Home")), &OpenPanel::go_home);
  add_shortcut(QKeySequence(QStringLiteral("Ctrl+H")), &OpenPanel::toggle_hidden);
  add_shortcut(QKeySequence(QStringLiteral("Ctrl+L")), &OpenPanel::edit_path);
  add_shortcut(QKeySequence(QStringLiteral("Ctrl+F")), &OpenPanel::edit_filter);
  add_shortcut(QKeySequence(QStringLiteral("Ctrl+Return")), &OpenPanel::choose);
}

void OpenPanel::add_shortcut(const QKeySequence& keys, void (OpenPanel::*call)()) {
  connect(new QShortcut(keys, this), &QShortcut::activated, this, call);
}

void OpenPanel::lay_out() {
  auto* top = new QHBoxLayout;
  for (QWidget* part : {static_cast<QWidget*>(back_), static_cast<QWidget*>(up_)}) top->addWidget(part);
  top->addWidget(path_, 1);
  auto* middle = new QSplitter;
  middle->addWidget(places_);
  middle->addWidget(table_);
  middle->setStretchFactor(1, 1);
  middle->setChildrenCollapsible(false);
  const int line = fontMetrics().height();
  middle->setSizes({line * 10, line * 34});
  auto* below = new QHBoxLayout;
  below->addWidget(filter_, 1);
  below->addSpacing(spacing(*this));
  below->addWidget(hidden_);
  auto* buttons = new QDialogButtonBox;
  buttons->addButton(choose_, QDialogButtonBox::AcceptRole);
  auto* cancel = new QPushButton(localized_text("SHEETCANCEL"));
  cancel->setAutoDefault(true);
  buttons->addButton(cancel, QDialogButtonBox::RejectRole);
  connect(choose_, &QPushButton::clicked, this, [this] { choose(); });
  connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
  auto* foot = new QHBoxLayout;
  foot->addWidget(status_, 1);
  foot->addWidget(buttons);
  auto* rows = new QVBoxLayout(this);
  const int margin = spacing(*this) * 3 / 2;
  rows->setContentsMargins(margin, margin, margin, margin);
  rows->setSpacing(spacing(*this));
  rows->addLayout(top);
  rows->addWidget(middle, 1);
  rows->addLayout(below);
  rows->addLayout(foot);
  resize(line * 48, line * 32);
}

// Going about.

void OpenPanel::go_to(std::string folder, std::string select, Way way) {
  if (reading_) *reading_ = true;
  reading_ = std::make_shared<std::atomic<bool>>(false);
  status_->setText(localized_text("PANELREADING"));
  QThreadPool::globalInstance()->start([self = QPointer<OpenPanel>(this), cancelled = reading_,
                                        folder = std::move(folder), select = std::move(select), way] {
    FolderListing listing = list_folder(folder, *cancelled);
    const auto show = [self, cancelled, select, way, listing = std::move(listing)]() mutable {
      if (self && !*cancelled) self->show_listing(std::move(listing), select, way);
    };
    QMetaObject::invokeMethod(qApp, show, Qt::QueuedConnection);
  });
}

void OpenPanel::show_listing(FolderListing listing, const std::string& select, Way way) {
  if (listing.error != 0 && listing.entries.empty()) return refuse(listing);
  if (way == Way::back) {
    left_.pop_back();
  } else if (!folder_.empty() && folder_ != listing.folder) {
    left_.push_back(folder_);
  }
  folder_ = listing.folder;
  path_->setText(path_text(folder_));
  back_->setEnabled(!left_.empty());
  up_->setEnabled(folder_ != "/");
  filter_->clear();
  model_->set_listing(std::move(listing));
  const int row = select.empty() ? -1 : model_->row_of(select);
  const QModelIndex index = model_->index(std::max(row, 0), 0);
  if (row >= 0) {
    table_->setCurrentIndex(index);
  } else {
    table_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  }
  table_->scrollTo(index);
}

void OpenPanel::refuse(const FolderListing& listing) {
  if (folder_.empty() && listing.folder != "/") return go_to(split_path(listing.folder).folder);
  if (listing.error == ENOTDIR && request_.files) {
    chosen_ = {listing.folder};
    return accept();
  }
  const std::string folder = in_sentence(decode_file_name(listing.folder));
  status_->setText(qt_text(localized_format("PANELUNREADABLE", folder, localized(system_error_text(listing.error)))));
}

void OpenPanel::go_up() {
  if (folder_ == "/") return;
  PathParts parts = split_path(folder_);
  go_to(std::move(parts.folder), std::move(parts.name));
}

void OpenPanel::go_back() {
  if (!left_.empty()) go_to(left_.back(), {}, Way::back);
}

void OpenPanel::go_home() {
  go_to(path_bytes(QDir::homePath()));
}

void OpenPanel::go_to_place() {
  const QListWidgetItem* place = places_->currentItem();
  if (place == nullptr) return;
  go_to(path_bytes(place->data(path_role).toString()));
  table_->setFocus();
}

void OpenPanel::open_typed_path() {
  go_to(typed_path(path_->text(), folder_));
  table_->setFocus();
}

void OpenPanel::open_row(int row) {
  if (row < 0 || row >= model_->rowCount()) return;
  const ListedEntry& entry = model_->entry(row);
  if (!entry.is_folder) return choose();
  go_to(joined(folder_, entry.name));
}

void OpenPanel::toggle_hidden() {
  hidden_->toggle();
}

void OpenPanel::edit_path() {
  path_->setFocus();
  path_->selectAll();
}

void OpenPanel::edit_filter() {
  filter_->setFocus();
  filter_->selectAll();
}

void OpenPanel::adopt_filter() {
  memory_.shows_hidden = hidden_->isChecked();
  model_->set_filter({request_.files, memory_.shows_hidden, request_.extensions, filter_->text()});
}

// Choosing.

std::vector<std::string> OpenPanel::selected_paths() const {
  std::vector<std::string> paths;
  for (const QModelIndex& index : table_->selectionModel()->selectedRows()) {
    const ListedEntry& entry = model_->entry(index.row());
    if (entry.is_folder ? request_.folders : request_.files) paths.push_back(joined(folder_, entry.name));
  }
  return paths;
}

// With no folder selected, the one shown is meant.
bool OpenPanel::takes_folder_shown() const {
  return request_.folders && !request_.files && !folder_.empty();
}

void OpenPanel::show_selection() {
  const std::size_t count = selected_paths().size();
  choose_->setEnabled(count > 0 || takes_folder_shown());
  const auto items = static_cast<std::size_t>(model_->rowCount());
  status_->setText(
      qt_text(count > 0 ? localized_format("PANELCHOSEN", count, items) : localized_format("PANELCOUNT", items)));
}

void OpenPanel::choose() {
  std::vector<std::string> paths = selected_paths();
  if (paths.empty() && takes_folder_shown()) paths.push_back(folder_);
  if (paths.empty()) return;
  chosen_ = std::move(paths);
  memory_.folder = folder_;
  accept();
}

// Enter does what the part it is pressed in is for, and only then what the default button does.
bool OpenPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const auto& key = *static_cast<QKeyEvent*>(event);  // NOLINT(cppcoreguidelines-pro-type-static-cast-downcast)
  if (watched == table_) return press_in_table(key);
  if (!is_enter(key) || key.modifiers().testFlag(Qt::ControlModifier)) return false;
  if (watched == path_) open_typed_path();
  if (watched == places_) go_to_place();
  if (watched == filter_) table_->setFocus();
  return true;
}

bool OpenPanel::press_in_table(const QKeyEvent& key) {
  if (is_enter(key) && !key.modifiers().testFlag(Qt::ControlModifier)) {
    if (table_->selectionModel()->selectedRows().size() > 1) {
      choose();
    } else {
      open_row(table_->currentIndex().row());
    }
    return true;
  }
  if (key.key() == Qt::Key_Backspace) {
    go_up();
    return true;
  }
  if (key.text() != QStringLiteral("/") && key.text() != QStringLiteral("~")) return false;
  path_->setText(key.text());
  path_->setFocus();
  return true;
}

}  // namespace brindle
