#pragma once

// The toolkit takes a text that looks like markup for markup, and opens the files that it names. Texts here hold names
// of anybody's files, so all are plain text: labels are made here, and of those that the toolkit makes (tooltips, its
// own dialogs) none is left to guess. Main thread.

class QLabel;
class QString;
class QWidget;

namespace brindle {

/// A label that never takes its text for markup: the only way to make one.
QLabel* plain_label(QWidget* parent = nullptr);
QLabel* plain_label(const QString& text, QWidget* parent = nullptr);

/// The same of all labels in a dialog of the toolkit's that exist already, before they are told any text.
void make_plain(QWidget& dialog);

/// From now on every label of the program, tooltips among them, is plain at the latest when it is about to be shown.
void show_plain_text_only();

}  // namespace brindle
