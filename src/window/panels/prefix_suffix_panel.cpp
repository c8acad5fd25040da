#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "methods/prefix_suffix.h"
#include "window/date_parts_rows.h"
#include "window/method_panels.h"

namespace brindle {
namespace {

bool adds_date(const RenameSettings& settings) {
  return !settings.isPrefixSuffixString;
}
bool adds_texts(const RenameSettings& settings) {
  return settings.isPrefixSuffixString;
}

void add_date_rows(const PanelContext& context, FormColumn& column) {
  QComboBox* source =
      choice_box(context, "prefixSuffixFileDateAttribute", "WHICHDATE",
                 {{"DATECREATED", date_created}, {"DATEMODIFIED", date_modified}, {"DATENOW", date_of_now}});
  QWidget* place = line({check_box(context, "isPrefixSuffixDatePrefix", "BEFORENAME"),
                         check_box(context, "isPrefixSuffixDateSuffix", "AFTERNAME")});
  QWidget* date = date_picker(context, prefix_suffix_parts);
  QWidget* time = time_picker(context, prefix_suffix_parts);
  QWidget* around = line({"TEXTBEFORE", text_field(context, "prefixSuffixDatePrefix", "TEXTBEFORE", 4), "TEXTAFTER",
                          text_field(context, "prefixSuffixDateSuffix", "TEXTAFTER", 4)});
  column.row("WHICHDATE", line({source}));
  column.row(new QWidget, place);  // beside the source they would be the widest row of all panels by far
  column.row("DATEFORMAT", date);
  column.row("TIMEFORMAT", time);
  column.row("AROUNDDATE", around);
  enable_when(context, {"isPrefixSuffixString"}, {source, place, date, time, around}, adds_date);
}

}  // namespace

QWidget* make_prefix_suffix_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::prefix_suffix, parent);
  BrindleAppController& controller = context.controller;
  const auto kinds = radio_buttons(context, panel.widget(), "isPrefixSuffixDate", {"ADDTEXTS", "ADDDATE"},
                                   [&controller](int id) { controller.options().prefixSuffixChanged(id == 1); });
  QLineEdit* prefix = text_field(context, "prefixSuffixPrefix", "PREFIXTEXT");
  QLineEdit* suffix = text_field(context, "prefixSuffixSuffix", "SUFFIXTEXT");
  FormColumn left(panel.columns(), 2);
  left.row(kinds[0]);
  left.indent();
  left.row("PREFIXTEXT", prefix);
  left.row("SUFFIXTEXT", suffix);
  enable_when(context, {"isPrefixSuffixString"}, {prefix, suffix}, adds_texts);
  FormColumn right(panel.columns(), 3);
  right.row(kinds[1]);
  right.indent();
  add_date_rows(context, right);
  panel.foot(context.controller.model());
  return panel.widget();
}

}  // namespace brindle
