#pragma once

// Pickers of the parts of a date and of a time with the separators between them, and what they write now.

#include "methods/date_parts.h"
#include "window/form_rows.h"

namespace brindle {

/// Three pickers and two separators. Each tooltip shows the date of now as it would be written.
QWidget* date_picker(const PanelContext& context, const DatePartMembers& members);
QWidget* time_picker(const PanelContext& context, const DatePartMembers& members);

}  // namespace brindle
