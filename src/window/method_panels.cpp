#include "window/method_panels.h"

#include <array>

#include "window/mnemonics.h"
#include "window/panels/panels.h"

namespace brindle {
namespace {

using MakePanel = QWidget* (*)(const PanelContext&, QWidget*);
constexpr std::array<MakePanel, 10> makers = {
    make_sequence_panel,        make_insert_delete_panel, make_replace_remove_panel, make_prefix_suffix_panel,
    make_date_time_panel,       make_general_panel,       make_audio_panel,          make_photo_panel,
    make_path_components_panel, make_from_list_panel};

}  // namespace

QWidget* make_method_panel(std::int32_t tab, BrindleAppController& controller, SettingBindings& bindings,
                           QWidget* parent) {
  QWidget* panel = makers.at(static_cast<std::size_t>(tab))({controller, bindings}, parent);
  give_mnemonics(panel);
  return panel;
}

}  // namespace brindle
