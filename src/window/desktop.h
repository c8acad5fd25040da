#pragma once

// The rest of the desktop: tooltips, the keyboard's place, the clipboard, other programs, help.

#include <functional>

#include "app/ports.h"

class QWidget;

namespace brindle {

/// What the desktop port needs the window for. The window sets it when it is there.
class WindowAccess {
 public:
  virtual ~WindowAccess() = default;
  virtual QWidget* tooltip_anchor(TooltipAnchor anchor) = 0;
  virtual void end_editing() = 0;
  virtual void focus_setting(std::string_view key) = 0;
  virtual void focus_list() = 0;
  virtual void bring_to_front() = 0;
  virtual void show_help(std::string_view page) = 0;
  virtual std::optional<std::u16string> ask_custom_tag() = 0;
};

class QtDesktop final : public DesktopPort {
 public:
  void set_window(WindowAccess* window) { window_ = window; }

  void show_tooltip(TooltipAnchor anchor, std::string_view key, const std::string& text) override;
  void hide_tooltip() override;
  void end_editing() override;
  void focus_setting(std::string_view key) override;
  void focus_list() override;
  void bring_to_front() override;
  void beep() override;
  bool open_with_default_application(const std::string& path) override;
  void show_help(std::string_view page) override;
  std::vector<std::string> files_on_clipboard() override;
  std::optional<std::u16string> ask_custom_tag() override;
  void quit() override;

 private:
  WindowAccess* window_ = nullptr;
};

}  // namespace brindle
