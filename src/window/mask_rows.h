#pragma once

// Rows that the two methods with masks have in common.

#include "window/form_rows.h"

namespace brindle {

class TokenStrip;

/// The mask of a method as chips, which follow it.
TokenStrip* mask_strip(const PanelContext& context, SettingKey list, TextKey hint);

/// A check box with the text that it switches on.
void add_switched_text(const PanelContext& context, FormColumn& column, SettingKey flag, TextKey label, SettingKey text,
                       TextKey tip);

/// The extensions of files that take part, with the button that edits them: `itemType` 0 photographs, 1 audio.
void add_extensions_row(const PanelContext& context, FormColumn& column, SettingKey list, std::int32_t itemType);

}  // namespace brindle
