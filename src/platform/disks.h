#pragma once

// Disks: bringing renames to those they were made on, and those that come and go. An object belongs to one thread.

#include <cstdint>
#include <string>
#include <unordered_map>

#include "platform/folder_handle.h"

namespace brindle {

/// Remembers a folder of every disk that something was renamed on, and brings those disks up to date.
class TouchedDisks {
 public:
  /// Keeps the handle of a folder in which entries were renamed, if it is open.
  void keep(FolderHandle folder);
  /// Returns once all renames in the folders kept so far are on their disks. 0, or the errno of the first disk that
  /// failed; the others are synced all the same.
  [[nodiscard]] int sync() const;

 private:
  std::unordered_map<std::uint64_t, FolderHandle> folders_;  // by device: the last one kept
};

/// Whether an absolute path that leads nowhere seems to lie on a disk that is not mounted just now: below a mount point
/// that fstab(5) names, or below a folder of /media, /run/media or /mnt that is missing, or empty and on the disk of
/// the folder above it.
bool lies_on_missing_disk(const std::string& path);

}  // namespace brindle
