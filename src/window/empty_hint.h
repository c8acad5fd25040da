#pragma once

class QAction;
class QWidget;

#include <QList>

namespace brindle {

/// What an empty list says: where files go, and buttons for the doors. Main thread.
QWidget* make_empty_hint(QWidget* parent);
/// Puts the doors' buttons below the text.
void add_doors_to_hint(QWidget* hint, const QList<QAction*>& doors);

}  // namespace brindle
