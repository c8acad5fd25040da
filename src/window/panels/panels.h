#pragma once

// The panels, a method a file. method_panels.h is the way in.

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

}  // namespace brindle
