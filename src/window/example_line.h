#pragma once

// One line below the options of a method: what they make of a name.

#include <QLabel>
#include <cstdint>

#include "app/window_model.h"

namespace brindle {

class ExampleLine final : public QLabel {
 public:
  /// For the panel of a tab; silent while another tab is chosen.
  ExampleLine(std::int32_t tab, WindowModel& model);
  ~ExampleLine() override;

 private:
  void refresh();

  std::int32_t tab_;
  WindowModel& model_;
  std::uint32_t observer_ = 0;
};

}  // namespace brindle
