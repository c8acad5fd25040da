#pragma once

// Gives the labels, check boxes and buttons of a panel their mnemonics: in each text a letter that nothing else in the
// window has, at the start of a word where that can be. So texts need none, in any language.

class QWidget;

namespace brindle {

/// Does so each time the panel is about to be shown, when it knows its window's menus.
void give_mnemonics(QWidget* panel);

}  // namespace brindle
