#pragma once

// The preferences, which hold for every profile. Main thread.

#include <optional>
#include <string>

#include "app/window_model.h"

namespace brindle {

class PreferencesController {
 public:
  explicit PreferencesController(MutableWindowModel& model) : model_(model) {}

  /// At the start: what was kept, or the defaults, which are kept from now on.
  void read();
  void setPreferences(const Preferences& preferences);  ///< saved at once; a failure is told
  /// "Show hidden items", remembered.
  void setIncludeHidden(bool include);

  // Ask for a folder; none when cancelled.

  std::optional<std::string> browseLogFolderPath(const std::string& current);
  std::optional<std::string> browseProfileFolderPath(const std::string& current);
  std::optional<std::string> browseRulesFolderPath(const std::string& current);

 private:
  MutableWindowModel& model_;
};

}  // namespace brindle
