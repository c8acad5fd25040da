#pragma once

// Lists of allowed extensions: capitals with a leading dot, such as ".JPG". Pure; any thread. UTF-16.

#include <string>
#include <string_view>

#include "settings/rename_settings.h"

namespace brindle {

/// The entry for an extension, which may have its dot already; "" for an empty one.
std::u16string extension_entry(std::u16string_view extension);

/// The list that a typed text stands for: members between ";", blanks around them and empty ones passed over, none
/// twice.
TextList parsed_extensions(std::u16string_view text);

}  // namespace brindle
