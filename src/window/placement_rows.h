#pragma once

// The five places that a text can go to in a name, with their fields: the same in every method that places one.

#include "window/form_rows.h"

namespace brindle {

struct PlacementKeys {
  SettingKey option;  ///< 0 beginning, 1 end, 2 position, 3 before a text, 4 after a text
  SettingKey position;
  SettingKey direction;
  SettingKey before_text;
  SettingKey before_occurrence;
  SettingKey after_text;
  SettingKey after_occurrence;
};

/// Adds the rows. Each option's fields are on while it is chosen and `active` holds; `active_keys` are what that reads.
void add_placement_rows(const PanelContext& context, FormColumn& column, QWidget* owner, const PlacementKeys& keys,
                        std::function<void(int)> chosen, std::vector<SettingKey> active_keys = {},
                        const Condition& active = {});

}  // namespace brindle
