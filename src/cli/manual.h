#pragma once

#include <string>

namespace brindle {

/// The manual page, for man: all commands, options and methods of the tables.
std::string manual_page();

}  // namespace brindle
