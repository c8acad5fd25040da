#pragma once

// What the panels of the methods are laid out with: fields bound to their settings, and rows that put them beside their
// labels. A field's object name is its key. Labels are keys of the string table.

#include <QWidget>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/brindle_app_controller.h"
#include "window/number_field.h"
#include "window/setting_bindings.h"

class QAbstractButton;
class QBoxLayout;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace brindle {

class PanelBody;

struct PanelContext {
  BrindleAppController& controller;
  SettingBindings& bindings;
};

/// The settings as they are named in the record, and the texts as in the string table.
using SettingKey = std::string_view;
using TextKey = std::string_view;

// Fields.

/// A text with a button that clears it, about `characters` wide and no narrower. `name` is what screen readers say.
QLineEdit* text_field(const PanelContext& context, SettingKey key, TextKey name, int characters = 10);
NumberField* number_field(const PanelContext& context, SettingKey key, TextKey name, NumberField::Limits limits = {});
QCheckBox* check_box(const PanelContext& context, SettingKey key, TextKey text);

struct Entry {
  TextKey text;
  QVariant data;  ///< what the setting becomes; without it, the place in the list
};
QComboBox* choice_box(const PanelContext& context, SettingKey key, TextKey name, const std::vector<Entry>& entries);
/// "from the start", "from the end": the direction in which a setting counts.
QComboBox* direction_box(const PanelContext& context, SettingKey key);

/// Radio buttons for 0, 1, … of a setting, which `chosen` is told of. They belong to `owner`; their names are the key
/// with the number behind it.
std::vector<QRadioButton*> radio_buttons(const PanelContext& context, QWidget* owner, SettingKey key,
                                         const std::vector<TextKey>& texts, std::function<void(int)> chosen);

QPushButton* push_button(std::string_view object_name, TextKey text, std::function<void()> clicked);
QLabel* text_label(TextKey text);
/// A quieter text that explains the row above.
QLabel* hint_label(TextKey text);

// What is on only while something else is chosen.

using Condition = std::function<bool(const RenameSettings&)>;
void enable_when(const PanelContext& context, const std::vector<SettingKey>& keys, std::vector<QWidget*> fields,
                 Condition condition);
void show_when(const PanelContext& context, const std::vector<SettingKey>& keys, std::vector<QWidget*> fields,
               Condition condition);

// Rows.

/// Widgets and texts side by side; what can grow does. A text is a label of the widget behind it.
struct LinePart {
  LinePart(QWidget* part) : widget(part) {}  // NOLINT(google-explicit-constructor): reads as a list of fields
  LinePart(const char* key) : text(key) {}   // NOLINT(google-explicit-constructor)
  QWidget* widget = nullptr;
  TextKey text;
};
QWidget* line(const std::vector<LinePart>& parts);

/// Rows of a label, a check box or a radio button with the field it belongs to.
class FormColumn {
 public:
  /// Adds itself to the parent, whose columns share the width by `stretch`.
  explicit FormColumn(QBoxLayout* parent, int stretch = 1);

  void row(TextKey label, QWidget* field);
  void row(QWidget* lead, QWidget* field);
  /// Over the whole width.
  void row(QWidget* widget);
  /// Rows from here on stand below the button that they depend on.
  void indent();

 private:
  QLayout* indented(QWidget* widget) const;

  QGridLayout* grid_;
  int next_ = 0;
  int indent_ = 0;
};

/// A panel: rows over the whole width first, then columns, the example at the foot.
class PanelFrame {
 public:
  PanelFrame(Method method, QWidget* parent);

  QWidget* widget() const;
  void head(QWidget* row);
  /// The columns, made on the first call; one below the other where the window is narrow.
  QBoxLayout* columns();
  /// What the method makes of a name, one line at the foot; silent while another method is chosen.
  void foot(WindowModel& model);

 private:
  Method method_;
  PanelBody* widget_;
  QVBoxLayout* rows_;
  QBoxLayout* columns_ = nullptr;
};

}  // namespace brindle
