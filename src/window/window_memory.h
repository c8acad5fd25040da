#pragma once

// What the window remembers between runs: its place and size, docks, splitters and columns, as one value of the user
// defaults. Main thread.

#include <string_view>

#include "settings/user_defaults.h"

class QHeaderView;
class QMainWindow;
class QSplitter;
class QWidget;

namespace brindle {

namespace user_default {
inline constexpr std::string_view window_state = "WINDOWSTATE";  ///< data: as written by remember_window
inline constexpr std::string_view sheet_size = "SHEETSIZE";      ///< begins the keys of sheets; text: "width,height"
}  // namespace user_default

/// The parts of a window that are remembered.
struct WindowParts {
  QMainWindow& window;
  QSplitter& rows;
  QSplitter& methods;
  QHeaderView& columns;
};

void remember_window(const WindowParts& parts, UserDefaults& defaults);
/// Gives a sheet the size that it had when it was closed last, and remembers the size when it closes. Its object name
/// says which it is; `defaults` outlive it.
void keep_size(QWidget& sheet, UserDefaults& defaults);

/// False, with nothing changed, when nothing (or nothing readable) is remembered.
bool restore_window(const WindowParts& parts, UserDefaults& defaults);

}  // namespace brindle
