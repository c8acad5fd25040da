#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "methods/date_time.h"
#include "window/date_parts_rows.h"
#include "window/method_panels.h"
#include "window/placement_rows.h"
#include "window/text.h"

namespace brindle {
namespace {

QWidget* source_fields(const PanelContext& context) {
  BrindleAppController& controller = context.controller;
  QComboBox* source = choice_box(context, "dateTimeDateOptionIndex", "WHICHDATE",
                                 {{"DATECREATED", {}}, {"DATEMODIFIED", {}}, {"DATECUSTOM", {}}});
  QObject::connect(source, &QComboBox::activated, source,
                   [&controller](int index) { controller.options().dateTimeDateTypeChanged(index); });
  auto* custom = new QDateTimeEdit;
  custom->setObjectName(QStringLiteral("dateTimeCustomDate"));
  custom->setAccessibleName(localized_text("DATECUSTOM"));
  custom->setCalendarPopup(true);
  context.bindings.bind(custom, "dateTimeCustomDate");
  enable_when(context, {"dateTimeDateOptionIndex"}, {custom},
              [](const RenameSettings& s) { return s.dateTimeDateOptionIndex == custom_date; });
  return line({source, custom});
}

void add_format_rows(const PanelContext& context, FormColumn& column) {
  QWidget* date = date_picker(context, date_time_parts);
  QWidget* time = time_picker(context, date_time_parts);
  QLineEdit* between = text_field(context, "dateTimeSeparator", "BETWEENDATEANDTIME", 4);
  QLineEdit* instead = text_field(context, "dateTimeColonReplace", "REPLACECOLONS", 4);
  column.row("WHICHDATE", source_fields(context));
  column.row(check_box(context, "hasDateFormat", "DATEFORMAT"), date);
  column.row(check_box(context, "hasTimeFormat", "TIMEFORMAT"), time);
  column.row("BETWEENDATEANDTIME",
             line({between, check_box(context, "isDateTimeColonReplace", "REPLACECOLONS"), instead}));
  column.row("AROUNDDATE", line({"TEXTBEFORE", text_field(context, "dateTimePrefix", "TEXTBEFORE", 4), "TEXTAFTER",
                                 text_field(context, "dateTimeSuffix", "TEXTAFTER", 4)}));
  enable_when(context, {"hasDateFormat"}, {date}, [](const RenameSettings& s) { return s.hasDateFormat; });
  enable_when(context, {"hasTimeFormat"}, {time}, [](const RenameSettings& s) { return s.hasTimeFormat; });
  enable_when(context, {"hasDateFormat", "hasTimeFormat"}, {between},
              [](const RenameSettings& s) { return s.hasDateFormat && s.hasTimeFormat; });
  enable_when(context, {"isDateTimeColonReplace"}, {instead},
              [](const RenameSettings& s) { return s.isDateTimeColonReplace; });
}

}  // namespace

QWidget* make_date_time_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::date_time, parent);
  BrindleAppController& controller = context.controller;
  FormColumn left(panel.columns(), 4);
  add_format_rows(context, left);
  FormColumn right(panel.columns(), 3);
  add_placement_rows(context, right, panel.widget(), date_placement,
                     [&controller](int option) { controller.options().dateTimeOptionsChanged(option); });
  panel.foot(context.controller.model());
  return panel.widget();
}

}  // namespace brindle
