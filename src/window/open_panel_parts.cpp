// What the open panel is made of.

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>
#include <QTreeView>

#include "window/folder_model.h"
#include "window/icons.h"
#include "window/open_panel.h"
#include "window/places.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

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
      hidden_(new QCheckBox(text_with_mnemonic("PANELHIDDEN"))),
      back_(tool_button("back", "panelBack", "PANELBACK")),
      up_(tool_button("move_up", "panelUp", "PANELUP")),
      status_(plain_label()),
      choose_(new QPushButton(text_with_mnemonic("PANELCHOOSE"))) {
  setObjectName(QStringLiteral("openPanel"));
  setWindowTitle(title_text(request_.title));
  setWindowModality(Qt::WindowModal);
  make_places();
  make_table();
  make_fields();
  lay_out();
  adopt_filter();
  const std::string& begin = request_.folder.empty() ? memory_.folder : request_.folder;
  go_to(begin.empty() ? path_bytes(QDir::homePath()) : begin);
  table_->setFocus();
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
  auto* cancel = new QPushButton(text_with_mnemonic("SHEETCANCEL"));
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

}  // namespace brindle
