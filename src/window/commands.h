#pragma once

// The commands of the main window: one table, of which menus, toolbar and context menu are made. Main thread.

#include <QObject>
#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>

#include "app/brindle_app_controller.h"

class QAction;
class QWidget;

namespace brindle {

class FileTableView;

/// What commands work on. All of it outlives them.
struct CommandTargets {
  BrindleAppController& app;
  FileTableView& table;
  QWidget& window;
  QAction& drawer;  ///< shows and hides the rules
};

/// When a command can be used. The live preview of a long list makes way for any command.
enum class Needs : std::uint8_t {
  nothing,
  idle,       ///< no job runs
  items,      ///< idle, and the list is not empty
  selection,  ///< idle, and rows are selected
  one_row,    ///< idle, and there is a current row
  preview,    ///< WindowState::preview_enabled
  rename,     ///< WindowState::rename_enabled
  job,        ///< a job runs
};

struct Command {
  std::string_view id;    ///< object name of its action
  std::string_view text;  ///< key
  std::string_view icon;  ///< drawing; "" for none
  const char* shortcut;   ///< portable; several are divided by ";"
  Needs needs;
  void (*run)(const CommandTargets& targets, bool checked);
  bool (*checked)(const CommandTargets& targets) = nullptr;  ///< of a switch
  bool in_list = false;                                      ///< its keys work while the list has the keyboard
  std::string_view short_text = {};                          ///< key, for the toolbar
  std::string_view tip = {};                                 ///< key
};

std::span<const Command> all_commands();

/// The actions of the table, kept true to the controller's state.
class Commands final : public QObject {
 public:
  Commands(const CommandTargets& targets, QObject* parent);

  QAction* action(std::string_view id) const;
  /// Enables, disables and checks what has changed.
  void refresh();

 private:
  QAction* make(const Command& command);
  bool is_enabled(Needs needs) const;

  CommandTargets targets_;
  std::unordered_map<std::string_view, QAction*> actions_;
};

}  // namespace brindle
