#include <QLineEdit>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "methods/path_components.h"
#include "window/method_panels.h"
#include "window/placement_rows.h"
#include "window/text.h"

namespace brindle {
QWidget* make_path_components_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::path_components, parent);
  BrindleAppController& controller = context.controller;
  FormColumn left(panel.columns(), 2);
  NumberField* levels = number_field(context, "pathComponentsLevelNo", "FOLDERLEVELS");
  levels->setToolTip(localized_text("FOLDERLEVELSTIP"));
  left.row("FOLDERLEVELS", line({levels}));
  left.row("BETWEENFOLDERS", text_field(context, "pathComponentsSeparator", "BETWEENFOLDERS", 6));
  left.row("FOLDERPREFIX", text_field(context, "pathComponentsPrefix", "FOLDERPREFIX", 6));
  left.row("FOLDERSUFFIX", text_field(context, "pathComponentsSuffix", "FOLDERSUFFIX", 6));
  FormColumn right(panel.columns(), 3);
  add_placement_rows(context, right, panel.widget(), path_placement,
                     [&controller](int option) { controller.options().pathComponentsOptionsChanged(option); });
  panel.foot(context.controller.model());
  return panel.widget();
}

}  // namespace brindle
