#pragma once

// Menus, toolbar and context menu, put together from the commands. Main thread.

#include "app/brindle_app_controller.h"

class QMainWindow;
class QMenu;
class QToolBar;

namespace brindle {

class Commands;
class FileTableView;

void make_menu_bar(QMainWindow& window, const Commands& commands, BrindleAppController& app, FileTableView& table);
QToolBar* make_toolbar(QMainWindow& window, const Commands& commands, BrindleAppController& app);
void fill_context_menu(QMenu& menu, const Commands& commands);

}  // namespace brindle
