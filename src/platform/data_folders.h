#pragma once

// Where the program keeps what is the user's. Safe on any thread as long as none changes the environment.

#include <string>
#include <string_view>

#include "platform/status.h"

namespace brindle {

/// $XDG_DATA_HOME; ~/.local/share when that is unset, empty or not absolute. Empty when no home folder can be told.
std::string data_home();

/// $XDG_CONFIG_HOME; ~/.config in the same cases.
std::string config_home();

/// The data folder: data_home() + "/Tessalon/Brindle4", or empty.
std::string getAppPath();

/// Makes sure that the subfolder `name` of the data folder exists ("" for the data folder itself), with all that is
/// above it. The folders it makes are the user's alone, and so is the subfolder from now on if it is ours. The
/// sentence names the folder.
Status createApplicationUsersFolder(std::string_view name);

/// Makes the folder at an absolute path with all that is above it; an existing folder will do. The sentence names the
/// folder.
Status make_folders(const std::string& path, unsigned mode);

}  // namespace brindle
