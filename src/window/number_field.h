#pragma once

// A field for a whole number that a setting keeps as text. Stepping stays between the limits; a value from a profile is
// shown as it is, even outside them. What may be typed is for CustomTextFieldFormatter to say where the field is short.

#include <QSpinBox>
#include <limits>
#include <optional>

#include "settings/field_filter.h"

namespace brindle {

class NumberField final : public QSpinBox {
 public:
  struct Limits {
    int lowest = 1;
    int highest = std::numeric_limits<int>::max();
    bool is_short = true;  ///< no more digits than the filter of short fields lets through
  };

  explicit NumberField(Limits limits, QWidget* parent = nullptr);

  void set_highest(int highest);

  /// What is empty when the field is left becomes the lowest value.
  QValidator::State validate(QString& text, int& position) const override;
  void fixup(QString& text) const override;
  void stepBy(int steps) override;

 protected:
  StepEnabled stepEnabled() const override;

 private:
  Limits limits_;
  CustomTextFieldFormatter filter_;
};

}  // namespace brindle
