#pragma once

// The window's icons: line drawings of resources/window/icons, drawn in the palette's text colour whenever they are
// painted, so that they follow a change of theme. Main thread.

#include <QIcon>
#include <QString>
#include <string_view>

#include "list/item_status.h"

namespace brindle {

struct ItemRecord;

/// The drawing of that name ("add_files"); an empty icon when there is none.
QIcon icon(std::string_view name);
/// One drawing while a command is on, another while it is off.
QIcon switch_icon(std::string_view on, std::string_view off);

QIcon application_icon();

/// The icon of a row: its kind (by name alone; no disk is touched), overlaid by "Error" or "Success" as its status asks
/// for; in the colour of a selected row's text where it is selected. `side` is in device-independent pixels.
QIcon item_icon(const ItemRecord& item, int side, qreal device_pixel_ratio);

}  // namespace brindle
