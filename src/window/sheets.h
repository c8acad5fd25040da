#pragma once

// The sheets over the main window: dialogs, each over its own controller. A call shows one and returns once it is
// closed; what was chosen has gone to the controller by then. Main thread. `parent` is the main window.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/brindle_app_controller.h"
#include "app/list_controller.h"

class QWidget;

namespace brindle {

void show_undo_sheet(QWidget* parent, BrindleAppController& app);
void show_profiles_sheet(QWidget* parent, BrindleAppController& app);
/// The chain as a tree: open, put in order, save, preview.
void show_rules_sheet(QWidget* parent, BrindleAppController& app);
/// Asks controller.list().showExport() first, so it may be called with an empty list.
void show_export_sheet(QWidget* parent, BrindleAppController& app);
void show_preferences_sheet(QWidget* parent, BrindleAppController& app);
void show_live_preview_sheet(QWidget* parent, BrindleAppController& app);
/// The allowed extensions: `itemType` 0 photographs, 1 audio.
void show_extensions_sheet(QWidget* parent, BrindleAppController& app, std::int32_t itemType);
/// The fields of a photo mask, as an outline to drag from.
void show_photo_mask_sheet(QWidget* parent, BrindleAppController& app);
/// What to do with paths dropped on the hub.
void show_choose_items_sheet(QWidget* parent, BrindleAppController& app, std::vector<std::string> paths);
/// A text of the user's own for a mask; none when cancelled.
std::optional<std::u16string> ask_custom_tag_sheet(QWidget* parent);
void show_about(QWidget* parent);

/// A help page by its file name ("Undo.html"; "index.html" is the contents), in a window of its own that stays beside
/// the main window: this call returns at once.
void show_help_page(QWidget* parent, std::string_view page);

}  // namespace brindle
