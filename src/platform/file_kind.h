#pragma once

// What a path is: file, folder, alias, package. Safe on any thread.

#include <string_view>

#include "platform/folder_handle.h"

namespace brindle {

struct FileKind {
  bool exists = false;      ///< a dangling symbolic link exists
  bool is_folder = false;   ///< the path, or what its last link points to, is a folder
  bool is_alias = false;    ///< a symbolic link
  bool is_package = false;  ///< see is_package_name; folders only
  unsigned long long inode = 0;
};

/// All of the above in one go, for an entry of an open folder whose own path passes through no link. `name` is
/// NUL-terminated.
FileKind file_kind(const FolderHandle& folder, const char* name);

/// Whether a folder of this name (bytes) is a bundle of other systems: one item to a person, never entered.
bool is_package_name(std::string_view name);

}  // namespace brindle
