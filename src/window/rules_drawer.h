#pragma once

// The drawer of the chain: its rules as a table, and the buttons that add, move, change, open and save them.

class QWidget;

namespace brindle {

class BrindleAppController;

/// A widget for a dock, over RulesController. `controller` outlives it.
QWidget* make_rules_drawer(BrindleAppController& controller, QWidget* parent);

}  // namespace brindle
