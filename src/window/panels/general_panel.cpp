#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "window/example_line.h"
#include "window/method_panels.h"
#include "window/text.h"

namespace brindle {
namespace {

QComboBox* case_box(const PanelContext& context, SettingKey key) {
  return choice_box(context, key, "LETTERCASE", {{"UPPERCASE", 1}, {"LOWERCASE", 2}, {"PROPERCASE", 3}});
}

// An option's row: its button, and its fields, which are on while it is chosen.
void option_row(const PanelContext& context, FormColumn& column, const std::vector<QRadioButton*>& buttons, int option,
                const std::vector<LinePart>& parts) {
  if (parts.empty()) {
    column.row(buttons[static_cast<std::size_t>(option)]);
    return;
  }
  std::vector<QWidget*> fields;
  for (const LinePart& part : parts) {
    if (part.widget != nullptr) fields.push_back(part.widget);
  }
  column.row(buttons[static_cast<std::size_t>(option)], line(parts));
  enable_when(context, {"generalOptionIndex"}, std::move(fields),
              [option](const RenameSettings& settings) { return settings.generalOptionIndex == option; });
}

QLineEdit* text_with_hint(const PanelContext& context, SettingKey key, TextKey name, TextKey tip) {
  QLineEdit* field = text_field(context, key, name, 6);
  field->setToolTip(localized_text(tip));
  return field;
}

}  // namespace

QWidget* make_general_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::general, parent);
  BrindleAppController& controller = context.controller;
  const auto buttons =
      radio_buttons(context, panel.widget(), "generalOptionIndex",
                    {"NAMECASE", "EXTENSIONCASE", "REMOVEEXTENSION", "CHANGEEXTENSION", "REVERSENAME", "REMOVESPACES",
                     "SWAPATTEXT", "SWAPATPOSITION", "REMOVEAFTER", "REMOVEFROM", "FITTOMASK", "WINDOWSCOMPATIBLE"},
                    [&controller](int option) { controller.options().generalOptionsChanged(option); });
  const auto row = [&](FormColumn& column, int option, const std::vector<LinePart>& parts) {
    option_row(context, column, buttons, option, parts);
  };
  FormColumn left(panel.columns(), 2);
  row(left, 0, {case_box(context, "generalFileNameCase")});
  row(left, 1, {case_box(context, "generalExtensionCase")});
  row(left, 2, {});
  row(left, 3, {text_field(context, "generalChangeExtension", "CHANGEEXTENSION", 6)});
  row(left, 4, {});
  row(left, 5, {});
  FormColumn right(panel.columns(), 3);
  row(right, 6, {text_field(context, "generalSwapSeperator", "SWAPATTEXT", 6)});
  row(right, 7, {number_field(context, "generalSwapPosition", "SWAPATPOSITION")});
  row(right, 8,
      {text_field(context, "generalRemoveAfterString", "REMOVEAFTER", 6), "OCCURRENCE",
       number_field(context, "generalRemoveAfterStringOccurrence", "OCCURRENCE")});
  row(right, 9,
      {text_field(context, "generalRemoveFromString", "REMOVEFROM", 6), "OCCURRENCE",
       number_field(context, "generalRemoveFromStringOccurrence", "OCCURRENCE")});
  row(right, 10, {text_with_hint(context, "generalFilenameMask", "FITTOMASK", "FITTOMASKTIP")});
  row(right, 11,
      {text_with_hint(context, "generalConvertWindowsCompatibleString", "WINDOWSCOMPATIBLE", "WINDOWSCOMPATIBLETIP")});
  panel.foot(new ExampleLine(Method::general, controller.model()));
  return panel.widget();
}

}  // namespace brindle
