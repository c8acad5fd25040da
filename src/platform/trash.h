#pragma once

// The desktop's trash, as freedesktop.org's trash specification (1.0) lays it out. Safe on any thread.

#include <string>

#include "platform/status.h"

namespace brindle {

/// Moves a file to the trash of its disk: the home trash when that is on the same disk, else the disk's own. Never
/// copies between disks, never replaces anything. On failure (ENOTSUP: there is no trash for it) the file is where it
/// was; the reason is a clause that names no file.
Status move_to_trash(const std::string& path);

}  // namespace brindle
