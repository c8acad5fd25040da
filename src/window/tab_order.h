#pragma once

// The order in which the Tab key goes through what a layout shows: as one reads it, whatever was made first. Main
// thread.

class QWidget;

namespace brindle {

/// Puts what lies in `root` into the order of its layouts, splitters and scroll areas, behind the first of it.
void order_tabs(QWidget& root);

}  // namespace brindle
