#include "window/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QHeaderView>
#include <QScreen>
#include <QSplitter>
#include <QToolBar>
#include <QVBoxLayout>

#include "app/jobs_controller.h"
#include "app/list_controller.h"
#include "app/profiles_controller.h"
#include "app/rules_controller.h"
#include "app/window_model.h"
#include "window/action_bar.h"
#include "window/commands.h"
#include "window/file_table_model.h"
#include "window/file_table_view.h"
#include "window/icons.h"
#include "window/keyboard.h"
#include "window/list_options_row.h"
#include "window/list_panel.h"
#include "window/main_menus.h"
#include "window/method_area.h"
#include "window/rules_drawer.h"
#include "window/sheets.h"
#include "window/text.h"
#include "window/theme.h"
#include "window/url_drops.h"

namespace brindle {

MainWindow::MainWindow(BrindleAppController& app) : app_(app) {
  setObjectName(QStringLiteral("mainWindow"));
  setWindowIcon(application_icon());
  make_drawer();
  make_centre();
  FileTableView& table = list_->table();
  make_menu_bar(*this, *commands_, app_, table);
  make_toolbar(*this, *commands_, app_);
  table.set_context_menu([this](QMenu& menu) { fill_context_menu(menu, *commands_); });
  connect(&table, &FileTableView::selection_changed, this, [this] { commands_->refresh(); });
  connect(table.selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { commands_->refresh(); });
  accept_file_drops(this, [this](std::vector<std::string> paths) { app_.list().acceptDrop(std::move(paths)); });
  restore_or_arrange();
  observer_ = app_.model().add_observer([this](ChangedSet changed) { show_change(changed); });
  show_change(ChangedSet{} | Changed::state | Changed::profile);
}

MainWindow::~MainWindow() {
  app_.model().remove_observer(observer_);
}

void MainWindow::make_drawer() {
  drawer_ = new QDockWidget(localized_text("RULESDRAWERTITLE"), this);
  drawer_->setObjectName(QStringLiteral("rulesDrawer"));
  drawer_->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
  drawer_->setWidget(make_rules_drawer(app_, drawer_));
  addDockWidget(Qt::RightDockWidgetArea, drawer_);
  drawer_->hide();
  connect(drawer_->toggleViewAction(), &QAction::toggled, this, [this](bool open) {
    app_.rules_controller().setOpen(open);
    if (commands_) commands_->refresh();
  });
}

void MainWindow::make_centre() {
  auto* centre = new QWidget(this);
  rows_ = new QSplitter(Qt::Vertical, centre);
  rows_->setObjectName(QStringLiteral("rowsSplitter"));
  rows_->setChildrenCollapsible(false);
  methods_ = new MethodArea(app_, rows_);
  auto* lower = new QWidget(rows_);
  list_ = new ListPanel(app_, lower);
  commands_ = new Commands({app_, list_->table(), *this, *drawer_->toggleViewAction()}, this);
  list_->add_buttons(*commands_);
  auto* below = new QVBoxLayout(lower);
  below->setContentsMargins(0, spacing(*this) / 2, 0, 0);
  below->setSpacing(spacing(*this) * 3 / 4);
  below->addWidget(make_list_options_row(app_, methods_->bindings(), lower));
  below->addWidget(list_, 1);
  below->addWidget(new ActionBar(app_.model(), list_->table(), *commands_, lower));
  order_tabs(*lower);
  rows_->setStretchFactor(0, 0);
  rows_->setStretchFactor(1, 1);
  auto* around = new QVBoxLayout(centre);
  const int margin = spacing(*this);
  around->setContentsMargins(margin, margin, margin, margin);
  around->addWidget(rows_);
  setCentralWidget(centre);
}

WindowParts MainWindow::parts() {
  return {*this, *rows_, *methods_->splitter(), *list_->table().horizontalHeader()};
}

void MainWindow::restore_or_arrange() {
  const int line = fontMetrics().height();
  const QSize room = screen()->availableSize();
  // Fonts are of different widths for their height; what the panels need goes by the width.
  const int width_at_first = std::max(line * 66, fontMetrics().averageCharWidth() * 170);
  resize(QSize(width_at_first, line * 46).boundedTo(room * 0.95));
  rows_->setSizes({line * 16, line * 27});
  // The names are what one looks at.
  for (const int column : {name_column, new_name_column})
    list_->table().setColumnWidth(column, std::max(list_->table().columnWidth(column), width() * 2 / 9));
  restore_window(parts(), app_.model().user_defaults());
}

void MainWindow::show_change(ChangedSet changed) {
  commands_->refresh();
  // A rule file that is opened opens the drawer.
  const bool open = app_.rules_controller().isOpen();
  if (has(changed, Changed::rules) && drawer_->toggleViewAction()->isChecked() != open) drawer_->setVisible(open);
  if (has(changed, Changed::profile) || has(changed, Changed::state))
    setWindowTitle(title_text(app_.profiles().window_title()));
  if (!app_.model().state().isExecuting && std::exchange(closes_when_idle_, false))
    QMetaObject::invokeMethod(
        this, [this] { close_now(); }, Qt::QueuedConnection);
}

// Closing.

bool MainWindow::may_stop_work() {
  return app_.model().state().is_quiet || closes_when_idle_ ||
         ask(app_.model().ports(), make_alert("QUITBUSYTITLE", "QUITBUSYMESSAGE"), "QUITBUSYSTOP", "QUITBUSYSTAY");
}

bool MainWindow::save_session() {
  remember_window(parts(), app_.model().user_defaults());
  return app_.applicationShouldTerminate();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (app_.model().state().isExecuting && !may_stop_work()) return;
  close_now();
}

void MainWindow::close_now() {
  if (app_.model().state().isExecuting) {
    closes_when_idle_ = true;
    return app_.jobs().cancelProcess();
  }
  if (!save_session()) return;
  hide();
  QApplication::exit(0);
}

// WindowAccess

QWidget* MainWindow::tooltip_anchor(TooltipAnchor anchor) {
  switch (anchor) {
    case TooltipAnchor::remove_button:
      return findChild<QWidget*>(QStringLiteral("tool_remove"));
    case TooltipAnchor::export_button:
      return findChild<QWidget*>(QStringLiteral("tool_export"));
    case TooltipAnchor::file_list:
      break;
  }
  return list_;
}

// A field writes what was typed when it loses the keyboard.
void MainWindow::end_editing() {
  QWidget* field = focusWidget();
  if (field == nullptr || !field->hasFocus()) return;
  if (list_->table().isAncestorOf(field)) return list_->table().setFocus();
  field->clearFocus();
  field->setFocus(Qt::OtherFocusReason);
}

void MainWindow::focus_setting(std::string_view key) {
  methods_->focus_setting(key);
}

void MainWindow::focus_list() {
  list_->table().setFocus();
}

void MainWindow::bring_to_front() {
  if (isMinimized()) showNormal();
  show();
  raise();
  activateWindow();
}

void MainWindow::show_help(std::string_view page) {
  show_help_page(this, page);
}

std::optional<std::u16string> MainWindow::ask_custom_tag() {
  return ask_custom_tag_sheet(this);
}

}  // namespace brindle
