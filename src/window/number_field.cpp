#include "window/number_field.h"

#include <QApplication>
#include <algorithm>

#include "window/text.h"

namespace brindle {

NumberField::NumberField(Limits limits, QWidget* parent) : QSpinBox(parent), limits_(limits) {
  setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  setAlignment(Qt::AlignRight);
  const int digits = limits.is_short ? filter_.maximumLength() + 1 : 6;
  const int frame = fontMetrics().height() * 2;
  setFixedWidth(fontMetrics().horizontalAdvance(QLatin1Char('0')) * digits + frame);
}

void NumberField::set_highest(int highest) {
  limits_.highest = highest;
}

QValidator::State NumberField::validate(QString& text, int& position) const {
  if (text.isEmpty()) return QValidator::Intermediate;
  if (!limits_.is_short) {
    if (text.startsWith(QLatin1Char('-')) && limits_.lowest >= 0) return QValidator::Invalid;
    return QSpinBox::validate(text, position);
  }
  const CustomTextFieldFormatter::Answer answer = filter_.check(utf16(text));
  if (answer.accepted) return text.toInt() < limits_.lowest ? QValidator::Intermediate : QValidator::Acceptable;
  // The value that is there may come from a profile, and stays.
  if (text == textFromValue(value())) return QValidator::Acceptable;
  if (answer.beep && hasFocus()) QApplication::beep();
  return QValidator::Invalid;
}

void NumberField::fixup(QString& text) const {
  text = qt_text(std::u16string_view(numeric_field_text(utf16(text), limits_.lowest)));
}

void NumberField::stepBy(int steps) {
  const qint64 wanted = qint64{value()} + steps;
  setValue(static_cast<int>(std::clamp<qint64>(wanted, limits_.lowest, limits_.highest)));
  selectAll();
}

QAbstractSpinBox::StepEnabled NumberField::stepEnabled() const {
  StepEnabled enabled = StepNone;
  if (value() < limits_.highest) enabled |= StepUpEnabled;
  if (value() > limits_.lowest) enabled |= StepDownEnabled;
  return enabled;
}

}  // namespace brindle
