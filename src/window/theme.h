#pragma once

// Colours, fonts and measures of the window, for light and dark palettes. Main thread.

#include <QColor>
#include <QPalette>

#include "list/item_status.h"

class QWidget;

namespace brindle {

/// The colour of a new name or a status: red where nothing will be renamed, blue where it was, else the text's own.
/// Each has a contrast of at least 4.5 to 1 on the palette's base colour.
QColor status_colour(ItemStatus status, const QPalette& palette);
/// Of a name that an item will not get.
QColor problem_colour(const QPalette& palette);

/// Text that explains: quieter than the rest, yet of sufficient contrast.
QColor quiet_colour(const QPalette& palette);

/// The ground of what changed in a name.
QColor changed_ground(const QPalette& palette);

bool is_dark(const QPalette& palette);

/// The desktop's colours where it has any; otherwise ours, dark where it says that it wants dark windows.
void follow_desktop_theme();
/// A dark or a light palette of our own, for the whole program.
void use_palette(bool dark);

/// The distance between groups and around panels, in pixels; it grows with the font.
int spacing(const QWidget& widget);

// The toolkit's own style, with what it draws too faintly: the outlines of check boxes and radio buttons, and where in
// the window the keyboard is. Main thread.

/// Uses it for the whole program, unless the desktop brought a style of its own.
void use_window_style();

}  // namespace brindle
