#pragma once

// The list of the ten methods, and the options of the chosen one. Main thread.

#include <QWidget>
#include <array>
#include <cstdint>
#include <string_view>

#include "app/brindle_app_controller.h"

class QListWidget;
class QScrollArea;
class QSplitter;
class QStackedWidget;

namespace brindle {

class SettingBindings;

/// The methods as they are listed, by their number (`selectedTab`).
struct MethodTitle {
  std::string_view key;
  std::string_view icon;
  std::string_view first_setting;  ///< the field that whoever calls for the method wants first
};
inline constexpr std::array<MethodTitle, 10> method_titles = {{
    {"METHODSEQUENCE", "sequence", "alphaNumericNumericStartWith"},
    {"METHODINSERTDELETE", "insert_delete", "insertDeleteInsert"},
    {"METHODREPLACEREMOVE", "replace_remove", "replaceRemoveThis"},
    {"METHODPREFIXSUFFIX", "prefix_suffix", "prefixSuffixPrefix"},
    {"METHODDATETIME", "date_time", "dateTimeDateOptionIndex"},
    {"METHODGENERAL", "general", "generalFileNameCase"},
    {"METHODAUDIO", "audio", "isID3RenamingSeperator"},
    {"METHODPHOTO", "photo", "photoDatePart1"},
    {"METHODPATHCOMPONENTS", "path_components", "pathComponentsLevelNo"},
    {"METHODFROMLIST", "from_list", "renameFile"},
}};

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
  void make_panel(std::int32_t tab);

  BrindleAppController& app_;
  SettingBindings* bindings_;
  QSplitter* splitter_;
  QListWidget* list_;
  QStackedWidget* panels_;
  std::array<QScrollArea*, method_titles.size()> frames_{};
  std::uint32_t observer_ = 0;
};

}  // namespace brindle
