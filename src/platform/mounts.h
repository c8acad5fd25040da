#pragma once

// Disks that come and go. Safe on any thread.

#include <string>

namespace brindle {

/// Whether an absolute path that leads nowhere seems to lie on a disk that is not mounted just now: below a mount point
/// that fstab(5) names, or below a folder of /media, /run/media or /mnt that is missing, or empty and on the disk of
/// the folder above it.
bool lies_on_missing_disk(const std::string& path);

}  // namespace brindle
