#pragma once

// The list of the methods, and the options of the chosen one. Main thread.

#include <QWidget>
#include <cstdint>
#include <string_view>
#include <vector>

#include "app/brindle_app_controller.h"
#include "settings/rename_settings.h"

class QListWidget;
class QScrollArea;
class QSplitter;
class QStackedWidget;

namespace brindle {

class SettingBindings;

class MethodArea final : public QWidget {
 public:
  MethodArea(BrindleAppController& app, QWidget* parent);
  ~MethodArea() override;

  SettingBindings& bindings() const { return *bindings_; }
  QSplitter* splitter() const { return splitter_; }
  void focus_methods() const;
  /// Shows the method that a setting belongs to, and puts the keyboard into the setting's field.
  void focus_setting(std::string_view key);

 private:
  void make_list();
  void show_tab();
  /// Panels are made when they are first seen.
  void make_panel(Method method);

  BrindleAppController& app_;
  SettingBindings* bindings_;
  QSplitter* splitter_;
  QListWidget* list_;
  QStackedWidget* panels_;
  std::vector<QScrollArea*> frames_;  // by the number of the method
  std::uint32_t observer_ = 0;
};

}  // namespace brindle
