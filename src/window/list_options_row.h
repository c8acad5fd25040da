#pragma once

class QWidget;

namespace brindle {

class BrindleAppController;
class SettingBindings;

/// The row above the list: files or folders, with subfolders, with hidden items. Main thread; `app` and `bindings`
/// outlive it.
QWidget* make_list_options_row(BrindleAppController& app, SettingBindings& bindings, QWidget* parent);

}  // namespace brindle
