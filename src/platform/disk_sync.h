#pragma once

// Bringing renames to the disks they were made on. One thread.

#include <cstdint>
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

}  // namespace brindle
