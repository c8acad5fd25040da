#pragma once

// Keys that mean the same everywhere. Main thread.

class QKeyEvent;
class QWidget;

namespace brindle {

/// Enter, of either block of keys.
bool is_enter(const QKeyEvent& key);

/// The Tab key goes through what a layout shows as one reads it, whatever was made first: puts what lies in `root` into
/// the order of its layouts, splitters and scroll areas, behind the first of it.
void order_tabs(QWidget& root);

}  // namespace brindle
