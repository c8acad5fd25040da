#pragma once

// The parameter panels of the ten methods. Every settings key of a method has its field here, bound to the record.

#include <cstdint>

class QWidget;

namespace brindle {

class BrindleAppController;
class SettingBindings;

/// The panel of the method with this number (`selectedTab`, 0 to 9). `controller` and `bindings` outlive it.
QWidget* make_method_panel(std::int32_t tab, BrindleAppController& controller, SettingBindings& bindings,
                           QWidget* parent);

}  // namespace brindle
