#pragma once

// The sheet that edits a list of allowed extensions. Main thread.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "app/sheet_controller.h"
#include "settings/rename_settings.h"

namespace brindle {

class OptionsController;

class ExtensionsEditorController final : public SheetController {
 public:
  static constexpr std::int32_t photo = 0;
  static constexpr std::int32_t audio = 1;

  /// Edits a copy of the photo tab's list (0) or the audio tab's (1); the first row is selected.
  ExtensionsEditorController(BrindleAppController& app, std::int32_t itemType);

  std::int32_t itemType() const { return itemType_; }
  const TextList& extensions() const { return extensions_; }  ///< upper case, with their dots
  std::optional<std::size_t> selected_row() const { return selected_; }
  void select_row(std::optional<std::size_t> row);
  bool can_remove() const { return selected_.has_value(); }
  bool can_apply() const { return selected_.has_value(); }

  /// Asks for a file and adds its extension.
  void add();
  void remove();
  /// Stores the list in the settings and closes.
  void apply();

 private:
  std::string_view help_page() const override { return "Extensions.html"; }

  OptionsController& options_;
  std::int32_t itemType_;
  TextList extensions_;
  std::optional<std::size_t> selected_;
};

}  // namespace brindle
