#include "window/main_menus.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <array>
#include <functional>
#include <vector>

#include "app/chain_controller.h"
#include "app/list_controller.h"
#include "app/options_controller.h"
#include "app/preview_controller.h"
#include "app/window_model.h"
#include "methods/method_table.h"
#include "window/commands.h"
#include "window/file_table_model.h"
#include "window/file_table_view.h"
#include "window/icons.h"
#include "window/method_panels.h"
#include "window/text.h"

namespace brindle {
namespace {

struct MenuLayout {
  std::string_view key;
  std::vector<std::string_view> entries;  // ids of commands; "-" divides; "@…" is a submenu
};

const std::array<MenuLayout, 7>& menus() {
  static const std::array<MenuLayout, 7> layout = {{
      {"MENUFILE",
       {"addFiles", "addFolder", "addFilesFolders", "addClipboard", "@recent", "-", "openList", "export", "-", "quit"}},
      {"MENUEDIT",
       {"editName", "copyNames", "-", "remove", "clear", "selectAll", "-", "moveUp", "moveDown", "-", "preferences"}},
      {"MENURENAME",
       {"preview", "rename", "cancel", "-", "undo", "redo", "-", "@methods", "@choices", "-", "livePreview",
        "livePreviewPreferences"}},
      {"MENURULES", {"addRule", "showRules", "-", "ruleFiles", "@rules"}},
      {"MENUPROFILES",
       {"emptyProfile", "defaultProfile", "openProfile", "-", "saveProfile", "saveProfileAs", "-", "manageProfiles"}},
      {"MENUVIEW", {"@columns", "@sort", "-", "showPicture", "-", "includeHidden", "showHub"}},
      {"MENUHELP", {"help", "about"}},
  }};
  return layout;
}

constexpr auto toolbar_entries = std::to_array<std::string_view>(
    {"addFiles", "addFolder", "@recent", "addClipboard", "-", "remove", "clear", "moveUp", "moveDown", "-", "undo", "-",
     "showRules", "manageProfiles", "export", "-", "livePreview"});

constexpr auto context_entries = std::to_array<std::string_view>(
    {"editName", "copyNames", "showPicture", "-", "moveUp", "moveDown", "-", "remove", "selectAll"});

// A submenu that is filled each time it opens.
QMenu* live_menu(QMenu* menu, std::function<void(QMenu&)> fill) {
  QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, fill = std::move(fill)] {
    menu->clear();
    fill(*menu);
    if (menu->isEmpty()) menu->addAction(localized_text("MENUNONE"))->setEnabled(false);
  });
  return menu;
}

// "&" in a name is no mnemonic.
QString menu_text(QString text) {
  return text.replace(QStringLiteral("&"), QStringLiteral("&&"));
}

bool is_idle(BrindleAppController& app) {
  return !app.model().state().is_busy();
}

void fill_recent(QMenu& menu, BrindleAppController& app) {
  for (std::size_t i = 0; i < app.model().recentItems().size(); ++i) {
    QAction* action = menu.addAction(menu_text(in_one_line(path_text(app.model().recentItems()[i].itemPath))));
    action->setEnabled(is_idle(app));
    QObject::connect(action, &QAction::triggered, &menu, [&app, i] { app.list().recentFolderChanged(i + 1); });
  }
}

void fill_rules(QMenu& menu, BrindleAppController& app) {
  for (const auto& [title, file] : app.chain().loadRulesMenu()) {
    QAction* action = menu.addAction(menu_text(in_one_line(path_text(title))));
    action->setEnabled(is_idle(app));
    QObject::connect(action, &QAction::triggered, &menu, [&app, file = file] { app.chain().ruleMenuItemClick(file); });
  }
}

void fill_columns(QMenu& menu, FileTableView& table) {
  for (std::size_t i = 1; i < columns.size(); ++i) {
    const int column = static_cast<int>(i);
    QAction* action = menu.addAction(localized_text(columns.at(i).title));
    action->setCheckable(true);
    action->setChecked(table.is_column_shown(column));
    QObject::connect(action, &QAction::toggled, &table, [&table, column](bool on) { table.show_column(column, on); });
  }
}

void fill_sort(QMenu& menu, BrindleAppController& app, FileTableView& table) {
  for (std::size_t i = 1; i < columns.size(); ++i) {
    QAction* action = menu.addAction(localized_text(columns.at(i).title));
    action->setCheckable(true);
    action->setChecked(app.model().sorting().column == columns.at(i).identifier);
    action->setEnabled(is_idle(app));
    QObject::connect(action, &QAction::triggered, &table, [&table, i] { table.sort_by(static_cast<int>(i)); });
  }
}

// What a run does about items that cannot get their names.
void fill_choices(QMenu& menu, BrindleAppController& app) {
  const RunChoices now = app.model().choices();
  const auto add = [&](std::string_view key, bool is_on, const RunChoices& chosen) {
    QAction* action = menu.addAction(text_with_mnemonic(key));
    action->setCheckable(true);
    action->setChecked(is_on);
    action->setEnabled(is_idle(app));
    QObject::connect(action, &QAction::triggered, &menu, [&app, chosen] { app.preview().set_choices(chosen); });
  };
  constexpr auto keys = std::to_array<std::string_view>({"CHOICESKIP", "CHOICENONE", "CHOICENUMBER"});
  RunChoices chosen = now;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    chosen.on_problem = static_cast<OnProblem>(i);
    add(keys.at(i), now.on_problem == chosen.on_problem, chosen);
  }
  menu.addSeparator();
  chosen = now;
  chosen.permute = !now.permute;
  add("CHOICEPERMUTE", now.permute, chosen);
}

// Made once: the keys work without the menu having been open.
void make_methods_menu(QMenu& menu, BrindleAppController& app) {
  auto* group = new QActionGroup(&menu);
  for (const MethodRow* method : method_table()) {
    const std::int32_t tab = tab_of(method->method);
    QAction* action = menu.addAction(icon(method->icon), localized_text(method->title));
    action->setObjectName(QStringLiteral("method%1").arg(tab));
    action->setCheckable(true);
    // The ten digits: 1 to 9, and 0.
    if (tab < 10) action->setShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg((tab + 1) % 10)));
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, &menu, [&app, chosen = method->method] {
      app.options().select_tab(chosen);
      app.model().ports().desktop.focus_setting(method_panel(chosen).first_setting);
    });
  }
  QObject::connect(&menu, &QMenu::aboutToShow, &menu, [group, &app] {
    const qsizetype tab = app.model().values().selectedTab;
    if (tab >= 0 && tab < group->actions().size()) group->actions().at(tab)->setChecked(true);
  });
}

void add_submenu(QMenu& menu, std::string_view name, BrindleAppController& app, FileTableView& table) {
  if (name == "@recent") {
    QMenu* recent = menu.addMenu(icon("recent"), text_with_mnemonic("MENURECENT"));
    live_menu(recent, [&app](QMenu& filled) { fill_recent(filled, app); });
  } else if (name == "@rules") {
    live_menu(menu.addMenu(text_with_mnemonic("MENURULEFILES")), [&app](QMenu& filled) { fill_rules(filled, app); });
  } else if (name == "@columns") {
    live_menu(menu.addMenu(text_with_mnemonic("MENUCOLUMNS")),
              [&table](QMenu& filled) { fill_columns(filled, table); });
  } else if (name == "@sort") {
    live_menu(menu.addMenu(text_with_mnemonic("MENUSORTBY")),
              [&app, &table](QMenu& filled) { fill_sort(filled, app, table); });
  } else if (name == "@choices") {
    live_menu(menu.addMenu(text_with_mnemonic("MENUCHOICES")), [&app](QMenu& filled) { fill_choices(filled, app); });
  } else if (name == "@methods") {
    make_methods_menu(*menu.addMenu(text_with_mnemonic("MENUMETHODS")), app);
  }
}

void add_recent_button(QToolBar& toolbar, BrindleAppController& app) {
  auto* button = new QToolButton(&toolbar);
  button->setObjectName(QStringLiteral("recentFolders"));
  button->setIcon(icon("recent"));
  button->setText(localized_text("SHORTRECENT"));
  button->setToolTip(localized_text("COMMANDRECENT"));
  button->setAccessibleName(localized_text("COMMANDRECENT"));
  button->setToolButtonStyle(toolbar.toolButtonStyle());
  button->setPopupMode(QToolButton::InstantPopup);
  button->setMenu(live_menu(new QMenu(button), [&app](QMenu& filled) { fill_recent(filled, app); }));
  toolbar.addWidget(button);
}

}  // namespace

void make_menu_bar(QMainWindow& window, const Commands& commands, BrindleAppController& app, FileTableView& table) {
  for (const MenuLayout& layout : menus()) {
    QMenu* menu = window.menuBar()->addMenu(text_with_mnemonic(layout.key));
    menu->setObjectName(qt_text(layout.key));
    for (const std::string_view entry : layout.entries) {
      if (entry == "-") {
        menu->addSeparator();
      } else if (entry.starts_with('@')) {
        add_submenu(*menu, entry, app, table);
      } else {
        menu->addAction(commands.action(entry));
      }
    }
  }
}

QToolBar* make_toolbar(QMainWindow& window, const Commands& commands, BrindleAppController& app) {
  QToolBar* toolbar = window.addToolBar(localized_text("TOOLBARNAME"));
  toolbar->setObjectName(QStringLiteral("toolbar"));
  toolbar->setMovable(false);
  toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
  toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  const int side = toolbar->fontMetrics().height() * 5 / 4;
  toolbar->setIconSize({side, side});
  for (const std::string_view entry : toolbar_entries) {
    if (entry == "-") {
      toolbar->addSeparator();
    } else if (entry == "@recent") {
      add_recent_button(*toolbar, app);
    } else {
      QAction* action = commands.action(entry);
      toolbar->addAction(action);
      toolbar->widgetForAction(action)->setObjectName(QStringLiteral("tool_") + action->objectName());
    }
  }
  return toolbar;
}

void fill_context_menu(QMenu& menu, const Commands& commands) {
  for (const std::string_view entry : context_entries) {
    if (entry == "-") {
      menu.addSeparator();
    } else {
      menu.addAction(commands.action(entry));
    }
  }
}

}  // namespace brindle
