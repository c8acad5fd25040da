#include "window/method_panels.h"

#include <algorithm>

#include "window/mnemonics.h"

namespace brindle {

const MethodPanel& method_panel(Method method) {
  return *std::ranges::find(method_panels, method, &MethodPanel::method);
}

QWidget* make_method_panel(Method method, BrindleAppController& controller, SettingBindings& bindings,
                           QWidget* parent) {
  QWidget* panel = method_panel(method).make({controller, bindings}, parent);
  give_mnemonics(panel);
  return panel;
}

}  // namespace brindle
