#include "window/method_panels.h"

#include <algorithm>

namespace brindle {

const MethodPanel& method_panel(Method method) {
  return *std::ranges::find(method_panels, method, &MethodPanel::method);
}

QWidget* make_method_panel(Method method, BrindleAppController& controller, SettingBindings& bindings,
                           QWidget* parent) {
  return method_panel(method).make({controller, bindings}, parent);
}

}  // namespace brindle
