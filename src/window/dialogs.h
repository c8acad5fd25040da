#pragma once

// Alerts and file choosers in the toolkit's dialogs.

#include <functional>

#include "app/ports.h"
#include "window/open_panel.h"

class QWidget;

namespace brindle {

/// The window over which dialogs appear. Null: none yet.
using DialogParent = std::function<QWidget*()>;

class QtAlerts final : public AlertPort {
 public:
  explicit QtAlerts(DialogParent parent) : parent_(std::move(parent)) {}
  std::size_t show(const Alert& alert) override;

 private:
  DialogParent parent_;
};

class QtChooser final : public ChooserPort {
 public:
  explicit QtChooser(DialogParent parent) : parent_(std::move(parent)) {}
  std::vector<std::string> choose(const OpenRequest& request) override;
  std::optional<std::string> choose(const SaveRequest& request) override;

  /// Called before each open panel, with what it will know.
  std::function<void(OpenPanelMemory&)> opening;
  /// Called after one was accepted.
  std::function<void(const OpenPanelMemory&)> opened;

 private:
  DialogParent parent_;
  OpenPanelMemory memory_;
};

}  // namespace brindle
