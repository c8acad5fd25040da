#pragma once

// What the disk says of a renaming that was meant, and may or may not have been carried out. One thread.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "platform/folder_handle.h"

namespace brindle {

/// A renaming within one folder.
struct IntendedRenaming {
  std::string_view folder;  ///< path
  std::string_view old_name;
  std::string_view new_name;
  std::uint64_t inode = 0;  ///< of the entry to be renamed; 0 when not known
};

enum class Evidence {
  renamed,
  not_renamed,
  none,  ///< the folder cannot be reached
};

/// Looks at directory entries. Nothing in the folders asked about may change meanwhile; questions about one folder in a
/// row are cheapest.
class DiskEvidence {
 public:
  Evidence ask(const IntendedRenaming& renaming);
  /// Settles a renaming that is marked as half done (see settle_two_step_move()): the one call that changes the disk.
  /// Afterwards ask() knows no more than what this returns; `none` also when the two names lead to files of which the
  /// disk does not tell which is which.
  Evidence settle_half_step(const IntendedRenaming& renaming);

 private:
  void enter(std::string_view folder);
  bool lists_only_new_name(std::string_view old_name, std::string_view new_name);

  std::string path_;
  FolderHandle folder_;
  bool keeps_inodes_ = false;
  bool listed_ = false;
  std::unordered_set<std::string> names_;  // filled when two names lead to one file
};

}  // namespace brindle
