#pragma once

// The five places that a text can go to in a name, with their fields: the same in every method that places one.

#include "methods/placement.h"
#include "window/form_rows.h"

namespace brindle {

/// Adds the rows. Each option's fields are on while it is chosen and `active` holds; `active_keys` are what that reads.
void add_placement_rows(const PanelContext& context, FormColumn& column, QWidget* owner, const PlacementMembers& place,
                        std::function<void(int)> chosen, std::vector<SettingKey> active_keys = {},
                        const Condition& active = {});

}  // namespace brindle
