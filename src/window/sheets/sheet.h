#pragma once

// What the sheets of the main window have in common: rows above a box of buttons, Escape and Help. Main thread.

#include <QDialog>
#include <QDialogButtonBox>
#include <QKeySequence>
#include <functional>
#include <string_view>

#include "app/sheet_controller.h"
#include "window/form_rows.h"

class QCheckBox;
class QLineEdit;
class QProgressBar;
class QVBoxLayout;

namespace brindle {

/// A dialog that blocks the main window alone: help can be read beside it.
class Sheet : public QDialog {
 public:
  /// `name` is the object name.
  Sheet(QWidget* parent, const char* name, const QString& title);

  /// The Close or Cancel button, Escape and the window's own button. A sheet with a controller asks that.
  void reject() override;

 protected:
  /// Shows what the controller says: when the sheet opens, and after each change.
  virtual void show_state() {}

  /// Where the sheet's rows go.
  QVBoxLayout* rows() const { return rows_; }
  /// A text that says what the sheet is for.
  QLabel* add_hint(TextKey text);

  // Buttons of the box, from the one that Enter presses to the one that Escape does.

  QPushButton* add_default_button(std::string_view name, TextKey text, std::function<void()> clicked);
  QPushButton* add_action_button(std::string_view name, TextKey text, std::function<void()> clicked);
  /// Cancel or Close, and Help.
  QPushButton* finish_buttons(TextKey close, std::function<void()> help);

  /// Follows the controller, and closes with it. It outlives the sheet's being shown.
  void attach(SheetController& controller);
  SheetController* controller() const { return controller_; }

 private:
  QVBoxLayout* rows_;
  QDialogButtonBox* buttons_;
  SheetController* controller_ = nullptr;
};

// Pieces of sheets.

/// A button among the rows, that Enter presses while it has the keyboard.
QPushButton* sheet_button(std::string_view name, TextKey text, std::function<void()> clicked);
/// A key that works while the widget has the keyboard.
void add_key(QWidget& widget, QKeySequence::StandardKey key, std::function<void()> pressed);
QCheckBox* sheet_check(std::string_view name, TextKey text, bool checked);
/// A path that can be read and copied.
QLineEdit* path_line(std::string_view name, TextKey accessible_name);
/// Shows a path (bytes), and all of it as the tooltip.
void show_path(QLineEdit* line, const std::string& path);
/// A bar that keeps its place while it is hidden.
QProgressBar* sheet_progress(std::string_view name);
/// `done` of `total`; of an unknown total, that something goes on. Hidden when nothing does.
void show_progress(QProgressBar* bar, bool runs, const WindowState& state);

}  // namespace brindle
