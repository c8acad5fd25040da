#include "window/commands.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <array>

#include "app/chain_controller.h"
#include "app/jobs_controller.h"
#include "app/list_controller.h"
#include "app/options_controller.h"
#include "app/preferences_controller.h"
#include "app/preview_controller.h"
#include "app/profiles_controller.h"
#include "app/renaming_controller.h"
#include "app/window_model.h"
#include "window/file_table_view.h"
#include "window/icons.h"
#include "window/method_panels.h"
#include "window/sheets.h"
#include "window/text.h"

namespace brindle {
namespace {

using T = CommandTargets;

void set_live_preview(const T& t, bool on) {
  LivePreviewPreferences preferences = t.app.model().live_preview();
  preferences.isLivePreviewEnabled = on;
  t.app.preview().setLivePreviewPreferences(preferences);
}

void set_show_hub(const T& t, bool on) {
  Preferences preferences = t.app.model().preferences();
  preferences.isShowHubIcon = on;
  t.app.preferences().setPreferences(preferences);
}

// What the keyboard is at: the options of a method have a page each.
std::string_view help_page(const T& t) {
  const auto* methods = t.window.findChild<const QWidget*>(QStringLiteral("methodArea"));
  const QWidget* focus = QApplication::focusWidget();
  const std::optional<Method> method = selected_method(t.app.model().values());
  if (methods == nullptr || focus == nullptr || !methods->isAncestorOf(focus)) return "index.html";
  return method ? method_panel(*method).help_page : "index.html";
}

void open_list(const T& t) {
  t.app.options().select_tab(Method::from_list);
  t.app.list().browseRenameFile();
  // Loading it comes next.
  auto* load = t.window.findChild<QWidget*>(QStringLiteral("loadRenameFile"));
  if (load != nullptr && load->isEnabled()) load->setFocus(Qt::OtherFocusReason);
}

constexpr auto commands = std::to_array<Command>({
    {"addFiles", "COMMANDADDFILES", "add_files", "Ctrl+O", Needs::idle,
     [](const T& t, bool) { t.app.list().addFilesAction(); }, nullptr, false, "SHORTADDFILES"},
    {"addFolder", "COMMANDADDFOLDER", "add_folder", "Ctrl+Shift+O", Needs::idle,
     [](const T& t, bool) { t.app.list().addFolderAction(); }, nullptr, false, "SHORTADDFOLDER"},
    {"addFilesFolders", "COMMANDADDFILESFOLDERS", "add_items", "Ctrl+Alt+O", Needs::idle,
     [](const T& t, bool) { t.app.list().addFilesFolders(); }},
    {"addClipboard", "COMMANDADDCLIPBOARD", "clipboard", "Ctrl+Shift+V;Ctrl+V", Needs::idle,
     [](const T& t, bool) { t.app.list().addFilesFoldersFromFinder(); }, nullptr, false, "SHORTADDCLIPBOARD"},
    {"openList", "COMMANDOPENLIST", "from_list", "Ctrl+L", Needs::idle, [](const T& t, bool) { open_list(t); }},
    {"export", "COMMANDEXPORT", "export", "Ctrl+E", Needs::idle,
     [](const T& t, bool) { show_export_sheet(&t.window, t.app); }, nullptr, false, "SHORTEXPORT"},
    {"quit", "COMMANDQUIT", "", "Ctrl+Q", Needs::nothing, [](const T& t, bool) { t.window.close(); }},

    {"editName", "COMMANDEDITNAME", "edit_name", "F2", Needs::one_row,
     [](const T& t, bool) { t.table.edit_new_name(); }},
    {"copyNames", "COMMANDCOPYNAMES", "", "Ctrl+C", Needs::selection, [](const T& t, bool) { t.table.copy_names(); },
     nullptr, true},
    {"remove", "COMMANDREMOVE", "remove", "Del;Backspace", Needs::items,
     [](const T& t, bool) { t.table.remove_selected(); }, nullptr, true, "SHORTREMOVE"},
    {"clear", "COMMANDCLEAR", "clear", "Ctrl+Shift+Del", Needs::items,
     [](const T& t, bool) { t.app.list().clearFilesFolders(); }, nullptr, false, "SHORTCLEAR"},
    {"selectAll", "COMMANDSELECTALL", "", "Ctrl+A", Needs::items, [](const T& t, bool) { t.table.selectAll(); },
     nullptr, true},
    {"moveUp", "COMMANDMOVEUP", "move_up", "Ctrl+Up", Needs::selection,
     [](const T& t, bool) { t.table.move_selected(FileTableView::Direction::up); }, nullptr, true, "SHORTMOVEUP"},
    {"moveDown", "COMMANDMOVEDOWN", "move_down", "Ctrl+Down", Needs::selection,
     [](const T& t, bool) { t.table.move_selected(FileTableView::Direction::down); }, nullptr, true, "SHORTMOVEDOWN"},
    {"preferences", "COMMANDPREFERENCES", "preferences", "Ctrl+,", Needs::idle,
     [](const T& t, bool) { show_preferences_sheet(&t.window, t.app); }},

    {"preview", "COMMANDPREVIEW", "preview", "F5;Ctrl+P", Needs::preview,
     [](const T& t, bool) { t.app.preview().actionPreview(); }, nullptr, false, "SHORTPREVIEW", "TIPPREVIEW"},
    {"rename", "COMMANDRENAME", "rename", "Ctrl+Return;Ctrl+Enter", Needs::rename,
     [](const T& t, bool) { t.app.renaming().actionApply(); }, nullptr, false, "SHORTRENAME", "TIPRENAME"},
    {"cancel", "COMMANDCANCEL", "cancel", "Esc", Needs::job, [](const T& t, bool) { t.app.jobs().cancelProcess(); }},
    {"undo", "COMMANDUNDO", "undo", "Ctrl+Z", Needs::idle, [](const T& t, bool) { show_undo_sheet(&t.window, t.app); },
     nullptr, false, "SHORTUNDO"},
    {"redo", "COMMANDREDO", "", "Ctrl+Shift+Z;Ctrl+Y", Needs::idle, [](const T& t, bool) { t.app.renaming().redo(); }},
    {"livePreview", "COMMANDLIVEPREVIEW", "live_on", "Ctrl+Shift+L", Needs::nothing, set_live_preview,
     [](const T& t) { return t.app.model().live_preview().isLivePreviewEnabled; }, false, "SHORTLIVEPREVIEW",
     "TIPLIVEPREVIEW"},
    {"livePreviewPreferences", "COMMANDLIVEPREVIEWPREFERENCES", "", "Ctrl+Alt+L", Needs::idle,
     [](const T& t, bool) { show_live_preview_sheet(&t.window, t.app); }},

    {"addRule", "COMMANDADDRULE", "plus", "Ctrl+R", Needs::idle, [](const T& t, bool) { t.app.chain().addToRule(); }},
    {"showRules", "COMMANDSHOWRULES", "rules", "Ctrl+Shift+R", Needs::nothing,
     [](const T& t, bool on) {
       if (t.drawer.isChecked() != on) t.drawer.trigger();
     },
     [](const T& t) { return t.drawer.isChecked(); }, false, "SHORTSHOWRULES"},
    {"ruleFiles", "COMMANDRULEFILES", "open", "Ctrl+Alt+R", Needs::idle,
     [](const T& t, bool) { show_rules_sheet(&t.window, t.app); }},

    {"emptyProfile", "COMMANDEMPTYPROFILE", "", "Ctrl+N", Needs::idle,
     [](const T& t, bool) { t.app.profiles().loadEmptyProfile(); }},
    {"defaultProfile", "COMMANDDEFAULTPROFILE", "", "Ctrl+D", Needs::idle,
     [](const T& t, bool) { t.app.loadDefaultProfile(); }},
    {"openProfile", "COMMANDOPENPROFILE", "open", "Ctrl+Shift+P", Needs::idle,
     [](const T& t, bool) { t.app.profiles().loadProfile(); }},
    {"saveProfile", "COMMANDSAVEPROFILE", "save", "Ctrl+S", Needs::idle,
     [](const T& t, bool) { t.app.profiles().saveProfile(); }},
    {"saveProfileAs", "COMMANDSAVEPROFILEAS", "", "Ctrl+Shift+S", Needs::idle,
     [](const T& t, bool) { t.app.profiles().saveAsProfile(); }},
    {"manageProfiles", "COMMANDMANAGEPROFILES", "profiles", "Ctrl+M", Needs::idle,
     [](const T& t, bool) { show_profiles_sheet(&t.window, t.app); }, nullptr, false, "SHORTMANAGEPROFILES"},

    {"showPicture", "COMMANDSHOWPICTURE", "picture", "Space", Needs::one_row,
     [](const T& t, bool) { t.table.toggle_picture(); }, nullptr, true},
    {"includeHidden", "COMMANDINCLUDEHIDDEN", "", "Ctrl+H", Needs::idle,
     [](const T& t, bool on) { t.app.preferences().setIncludeHidden(on); },
     [](const T& t) { return t.app.model().include_hidden(); }},
    {"showHub", "COMMANDSHOWHUB", "hub", "Ctrl+B", Needs::nothing, set_show_hub,
     [](const T& t) { return t.app.model().preferences().isShowHubIcon; }},

    {"help", "COMMANDHELP", "help", "F1", Needs::nothing,
     [](const T& t, bool) { show_help_page(&t.window, help_page(t)); }},
    {"about", "COMMANDABOUT", "", "Shift+F1", Needs::nothing, [](const T& t, bool) { show_about(&t.window); }},
});

QList<QKeySequence> shortcuts_of(const Command& command) {
  QList<QKeySequence> shortcuts;
  for (const QString& keys : QString::fromLatin1(command.shortcut).split(u';', Qt::SkipEmptyParts))
    shortcuts << QKeySequence::fromString(keys, QKeySequence::PortableText);
  return shortcuts;
}

// The toolbar shows no keys by itself.
QString tooltip_of(const Command& command, const QAction& action) {
  QString text = localized_text(command.tip.empty() ? command.text : command.tip);
  if (!action.shortcut().isEmpty())
    text += QStringLiteral(" (%1)").arg(action.shortcut().toString(QKeySequence::NativeText));
  return text;
}

}  // namespace

std::span<const Command> all_commands() {
  return commands;
}

Commands::Commands(const CommandTargets& targets, QObject* parent) : QObject(parent), targets_(targets) {
  for (const Command& command : commands) actions_.emplace(command.id, make(command));
  refresh();
}

QAction* Commands::make(const Command& command) {
  auto* action = new QAction(text_with_mnemonic(command.text), this);
  action->setObjectName(qt_text(command.id));
  if (command.id == "livePreview") {
    action->setIcon(switch_icon("live_on", "live_off"));
  } else if (!command.icon.empty()) {
    action->setIcon(icon(command.icon));
  }
  if (!command.short_text.empty()) action->setIconText(localized_text(command.short_text));
  action->setShortcuts(shortcuts_of(command));
  action->setToolTip(tooltip_of(command, *action));
  action->setCheckable(command.checked != nullptr);
  action->setMenuRole(QAction::NoRole);
  // A key that edits means the field where the keyboard is, unless that is the list.
  if (command.in_list) {
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    targets_.table.addAction(action);
  } else {
    targets_.window.addAction(action);
  }
  connect(action, &QAction::triggered, this, [this, &command](bool checked) {
    command.run(targets_, checked);
    refresh();
  });
  return action;
}

QAction* Commands::action(std::string_view id) const {
  const auto found = actions_.find(id);
  if (found == actions_.end()) qFatal("no command is called %s", std::string(id).c_str());
  return found->second;
}

bool Commands::is_enabled(Needs needs) const {
  const WindowState& state = targets_.app.model().state();
  const bool idle = !state.is_busy();
  switch (needs) {
    case Needs::nothing:
      return true;
    case Needs::idle:
      return idle;
    case Needs::items:
      return idle && state.item_count > 0;
    case Needs::selection:
      return idle && targets_.table.has_selection();
    case Needs::one_row:
      return idle && targets_.table.currentIndex().isValid();
    case Needs::preview:
      return state.preview_enabled;
    case Needs::rename:
      return state.rename_enabled;
    case Needs::job:
      return state.is_busy();
  }
  return false;
}

void Commands::refresh() {
  for (const Command& command : commands) {
    QAction* action = actions_.at(command.id);
    action->setEnabled(is_enabled(command.needs));
    if (command.checked) action->setChecked(command.checked(targets_));
  }
}

}  // namespace brindle
