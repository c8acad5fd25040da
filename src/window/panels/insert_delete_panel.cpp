#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "methods/insert_delete.h"
#include "window/method_panels.h"
#include "window/placement_rows.h"

namespace brindle {
namespace {

bool deletes(const RenameSettings& settings) {
  return settings.isInsertDeleteDelete;
}
bool inserts(const RenameSettings& settings) {
  return !settings.isInsertDeleteDelete;
}

}  // namespace

QWidget* make_insert_delete_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::insert_delete, parent);
  QWidget* owner = panel.widget();
  BrindleAppController& controller = context.controller;
  const auto kinds = radio_buttons(context, owner, "isInsertDeleteDelete", {"INSERTTEXT", "DELETECHARACTERS"},
                                   [&controller](int id) { controller.options().insertDeleteChanged(id == 1); });

  FormColumn left(panel.columns(), 3);
  QLineEdit* text = text_field(context, "insertDeleteInsert", "INSERTTEXT");
  left.row(kinds[0], text);
  left.indent();
  enable_when(context, {"isInsertDeleteDelete"}, {text}, inserts);
  add_placement_rows(
      context, left, owner, insert_placement,
      [&controller](int option) { controller.options().insertOptionChanged(option); }, {"isInsertDeleteDelete"},
      inserts);

  FormColumn right(panel.columns(), 2);
  NumberField* position = number_field(context, "insertDeleteFromCharacterPosition", "FROMCHARACTER");
  NumberField* count = number_field(context, "insertDeleteNumberOfCharacters", "NUMBEROFCHARACTERS");
  QCheckBox* backwards = check_box(context, "isInsertDeleteDeleteFromBackWard", "COUNTFROMEND");
  right.row(kinds[1]);
  right.indent();
  right.row("FROMCHARACTER", line({position}));
  right.row("NUMBEROFCHARACTERS", line({count}));
  right.row(backwards);
  enable_when(context, {"isInsertDeleteDelete"}, {position, count, backwards}, deletes);
  panel.foot(context.controller.model());
  return owner;
}

}  // namespace brindle
