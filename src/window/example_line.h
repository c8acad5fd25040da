#pragma once

// One line below the options of a method: what they make of a name.

#include <QLabel>
#include <cstdint>

#include "app/window_model.h"

namespace brindle {

class ExampleLine final : public QLabel {
 public:
  /// For the panel of a method; silent while another is chosen.
  ExampleLine(Method method, WindowModel& model);
  ~ExampleLine() override;

 private:
  void refresh();

  Method method_;
  WindowModel& model_;
  std::uint32_t observer_ = 0;
};

}  // namespace brindle
