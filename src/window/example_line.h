#pragma once

// One line below the options of a method: what they make of a name.

#include <QLabel>
#include <cstdint>

#include "app/brindle_app_controller.h"

namespace brindle {

class ExampleLine final : public QLabel {
 public:
  /// For the panel of a method; silent while another is chosen.
  ExampleLine(Method method, BrindleAppController& controller);
  ~ExampleLine() override;

 private:
  void refresh();

  Method method_;
  BrindleAppController& controller_;
  std::uint32_t settings_observer_ = 0;
  std::uint32_t observer_ = 0;
};

}  // namespace brindle
