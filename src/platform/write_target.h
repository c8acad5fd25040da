#pragma once

// Where a file that a person names for writing really lies. Safe on any thread.

#include <string>

#include "platform/folder_handle.h"

namespace brindle {

/// An error beside the system's own: another user may have put the link there to have somebody else's file replaced.
constexpr int foreign_link_error = -1;

/// An open folder and a name in it, which was no symbolic link when it was looked at.
struct WriteTarget {
  FolderHandle folder;
  std::string name;
};

/// Follows symbolic links at the end of `path`, so that the link stays and the file it leads to is written. In a folder
/// that others than its owner may write in, a link counts only when it is ours or the folder's owner's, whatever the
/// system is set to. Returns 0, errno or foreign_link_error.
[[nodiscard]] int find_write_target(const std::string& path, WriteTarget& target);

}  // namespace brindle
