#pragma once

// The parameter panels of the methods, one a file in panels/, and the table that lists them. Every settings key of a
// method has its field here, bound to the record.

#include <algorithm>
#include <array>
#include <string_view>

#include "window/form_rows.h"

namespace brindle {

QWidget* make_sequence_panel(const PanelContext& context, QWidget* parent);
QWidget* make_insert_delete_panel(const PanelContext& context, QWidget* parent);
QWidget* make_replace_remove_panel(const PanelContext& context, QWidget* parent);
QWidget* make_prefix_suffix_panel(const PanelContext& context, QWidget* parent);
QWidget* make_date_time_panel(const PanelContext& context, QWidget* parent);
QWidget* make_general_panel(const PanelContext& context, QWidget* parent);
QWidget* make_audio_panel(const PanelContext& context, QWidget* parent);
QWidget* make_photo_panel(const PanelContext& context, QWidget* parent);
QWidget* make_path_components_panel(const PanelContext& context, QWidget* parent);
QWidget* make_from_list_panel(const PanelContext& context, QWidget* parent);

/// What the window has of a method beside its row in the method table.
struct MethodPanel {
  Method method;
  QWidget* (*make)(const PanelContext&, QWidget* parent);  ///< what the context names outlives the panel
  std::string_view first_setting;                          ///< the field that whoever calls for the method wants first
  std::string_view help_page;
};

inline constexpr auto method_panels = std::to_array<MethodPanel>({
    {Method::sequence, make_sequence_panel, "alphaNumericNumericStartWith", "Sequence.html"},
    {Method::insert_delete, make_insert_delete_panel, "insertDeleteInsert", "Insert-Delete.html"},
    {Method::replace_remove, make_replace_remove_panel, "replaceRemoveThis", "Replace-Remove.html"},
    {Method::prefix_suffix, make_prefix_suffix_panel, "prefixSuffixPrefix", "Prefix-Suffix.html"},
    {Method::date_time, make_date_time_panel, "dateTimeDateOptionIndex", "Date-Time.html"},
    {Method::general, make_general_panel, "generalFileNameCase", "General.html"},
    {Method::audio, make_audio_panel, "isID3RenamingSeperator", "Audio-renaming.html"},
    {Method::photo, make_photo_panel, "photoDatePart1", "Photo-renaming.html"},
    {Method::path_components, make_path_components_panel, "pathComponentsLevelNo", "Path-components.html"},
    {Method::from_list, make_from_list_panel, "renameFile", "Rename-from-list.html"},
});

inline const MethodPanel& method_panel(Method method) {
  return *std::ranges::find(method_panels, method, &MethodPanel::method);
}

}  // namespace brindle
