#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <span>
#include <utility>
#include <vector>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "methods/general.h"
#include "window/method_panels.h"
#include "window/text.h"

namespace brindle {
namespace {

// As many as fit beside the others, whose fields are wider.
constexpr std::size_t rows_on_the_left = 6;

QComboBox* case_box(const PanelContext& context, SettingKey key) {
  return choice_box(context, key, "LETTERCASE", {{"UPPERCASE", 1}, {"LOWERCASE", 2}, {"PROPERCASE", 3}});
}

// An option, and its fields, which are on while it is chosen.
struct OptionRow {
  GeneralOption option;
  TextKey text;
  std::vector<LinePart> fields;
};

void add_rows(const PanelContext& context, FormColumn& column, std::span<QRadioButton* const> buttons,
              std::span<const OptionRow> rows) {
  for (const auto& [option, text, fields] : rows) {
    QRadioButton* button = buttons[static_cast<std::size_t>(option)];
    if (fields.empty()) {
      column.row(button);
      continue;
    }
    column.row(button, line(fields));
    std::vector<QWidget*> widgets;
    for (const LinePart& part : fields)
      if (part.widget != nullptr) widgets.push_back(part.widget);
    enable_when(context, {"generalOptionIndex"}, std::move(widgets), [chosen = option](const RenameSettings& settings) {
      return settings.generalOptionIndex == static_cast<std::int32_t>(chosen);
    });
  }
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
  const auto text = [&](SettingKey key, TextKey name) { return text_field(context, key, name, 6); };
  using enum GeneralOption;
  const std::vector<OptionRow> rows = {
      {convert_filename_case, "NAMECASE", {case_box(context, "generalFileNameCase")}},
      {convert_extension, "EXTENSIONCASE", {case_box(context, "generalExtensionCase")}},
      {remove_extension, "REMOVEEXTENSION", {}},
      {change_extension, "CHANGEEXTENSION", {text("generalChangeExtension", "CHANGEEXTENSION")}},
      {reverse, "REVERSENAME", {}},
      {remove_spaces, "REMOVESPACES", {}},
      {swap_from_seperator, "SWAPATTEXT", {text("generalSwapSeperator", "SWAPATTEXT")}},
      {swap_from_position, "SWAPATPOSITION", {number_field(context, "generalSwapPosition", "SWAPATPOSITION")}},
      {remove_after_string,
       "REMOVEAFTER",
       {text("generalRemoveAfterString", "REMOVEAFTER"), "OCCURRENCE",
        number_field(context, "generalRemoveAfterStringOccurrence", "OCCURRENCE")}},
      {remove_from_string,
       "REMOVEFROM",
       {text("generalRemoveFromString", "REMOVEFROM"), "OCCURRENCE",
        number_field(context, "generalRemoveFromStringOccurrence", "OCCURRENCE")}},
      {filename_mask, "FITTOMASK", {text_with_hint(context, "generalFilenameMask", "FITTOMASK", "FITTOMASKTIP")}},
      {convert_windows_compatible,
       "WINDOWSCOMPATIBLE",
       {text_with_hint(context, "generalConvertWindowsCompatibleString", "WINDOWSCOMPATIBLE", "WINDOWSCOMPATIBLETIP")}},
  };
  std::vector<TextKey> texts;
  texts.reserve(std::size(rows));
  for (const OptionRow& row : rows) texts.push_back(row.text);
  const auto buttons = radio_buttons(context, panel.widget(), "generalOptionIndex", texts,
                                     [&controller](int option) { controller.options().generalOptionsChanged(option); });
  FormColumn left(panel.columns(), 2);
  add_rows(context, left, buttons, std::span(rows).first(rows_on_the_left));
  FormColumn right(panel.columns(), 3);
  add_rows(context, right, buttons, std::span(rows).subspan(rows_on_the_left));
  panel.foot(context.controller.model());
  return panel.widget();
}

}  // namespace brindle
