#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QRegularExpressionValidator>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "methods/sequence.h"
#include "window/method_panels.h"
#include "window/text.h"

namespace brindle {
namespace {

constexpr int letters_in_alphabet = 26;

bool is_lettered(const RenameSettings& settings) {
  return settings.isAlphaNumericAlphabetic;
}
bool counts_down(const RenameSettings& settings) {
  return settings.isAlphaNumericDecrement;
}

QWidget* start_fields(const PanelContext& context) {
  NumberField* number = number_field(context, key_of(number_counter.start), "STARTWITH", {0, 999999999, false});
  QLineEdit* letters = text_field(context, key_of(letter_counter.start), "STARTWITH", 6);
  letters->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[a-z]{0,6}")), letters));
  letters->setToolTip(localized_text("STARTLETTERSTIP"));
  show_when(context, {"isAlphaNumericAlphabetic"}, {number}, [](const RenameSettings& s) { return !is_lettered(s); });
  show_when(context, {"isAlphaNumericAlphabetic"}, {letters}, is_lettered);
  return line({number, letters});
}

QWidget* direction_fields(const PanelContext& context, QWidget* owner) {
  const auto buttons = radio_buttons(context, owner, "isAlphaNumericDecrement", {"COUNTUP", "COUNTDOWN"},
                                     [&controller = context.controller](int id) {
                                       controller.options().alphaNumericIncrementDecrementChanged(id == 1);
                                     });
  NumberField* up = number_field(context, "alphaNumericIncrementBy", "COUNTBY", {1, 999999999, false});
  NumberField* down = number_field(context, "alphaNumericDecrementBy", "COUNTBY", {1, 999999999, false});
  show_when(context, {"isAlphaNumericDecrement"}, {up}, [](const RenameSettings& s) { return !counts_down(s); });
  show_when(context, {"isAlphaNumericDecrement"}, {down}, counts_down);
  context.bindings.follow({"isAlphaNumericAlphabetic"}, [=](const RenameSettings& settings) {
    for (NumberField* step : {up, down}) step->set_highest(is_lettered(settings) ? letters_in_alphabet : 999999999);
  });
  return line({buttons[0], buttons[1], "COUNTBY", up, down});
}

}  // namespace

QWidget* make_sequence_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::sequence, parent);
  QWidget* owner = panel.widget();
  BrindleAppController& controller = context.controller;
  const auto kinds =
      radio_buttons(context, owner, "isAlphaNumericAlphabetic", {"NUMBERS", "LETTERSCHOICE"},
                    [&controller](int id) { controller.options().alphaNumericNumericAlphabeticChanged(id == 1); });
  QLineEdit* padding = text_field(context, "alphaNumericPaddingMask", "PADDING", 6);
  padding->setPlaceholderText(QStringLiteral("000"));
  padding->setToolTip(localized_text("PADDINGTIP"));

  FormColumn left(panel.columns());
  left.row("COUNTWITH", line({kinds[0], kinds[1]}));
  left.row("STARTWITH", start_fields(context));
  left.row("COUNTDIRECTION", direction_fields(context, owner));
  left.row("PADDING", padding);

  QCheckBox* separates = check_box(context, "isAlphaNumericSeperator", "WITHSEPARATOR");
  QLineEdit* separator = text_field(context, "alphaNumericSeperator", "SEPARATOR", 6);
  enable_when(context, {"isAlphaNumericSeperator"}, {separator},
              [](const RenameSettings& s) { return s.isAlphaNumericSeperator; });
  FormColumn right(panel.columns());
  right.row("PLACE", line({check_box(context, "isAlphaNumericPrefix", "BEFORENAME"),
                           check_box(context, "isAlphaNumericSufix", "AFTERNAME")}));
  QLabel* hint = hint_label("NEITHERREPLACES");
  right.row(hint);
  right.row(separates, separator);
  right.row(check_box(context, "isAlphaNumericResetSequenceOnEachFolder", "RESTARTINFOLDER"));
  panel.foot(context.controller.model());
  return owner;
}

}  // namespace brindle
