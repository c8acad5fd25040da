#pragma once

// Keeps the paths of the list true while folders in it are renamed: what lies below a renamed folder goes with it, and
// nothing else does. The work does not grow with what is below.
//
// One thread; the list must not be sorted, added to or removed from in between.

#include <span>
#include <string_view>

#include "list/file_list.h"

namespace brindle {

class PathFollower {
 public:
  explicit PathFollower(FileList& files) : files_(files) {}

  /// The entry `old_name` of `folder` has been renamed to `new_name`. The renamed item's own row is not touched.
  void rename(FolderId folder, std::string_view old_name, std::string_view new_name);

  /// Entries of `folder` have passed their names round.
  void follow_all(FolderId folder, std::span<const NameChange> changes) {
    files_.folders().rename_children(folder, changes);
  }

  /// A folder has moved. Nothing happens when it would come to lie below itself.
  void move(FolderId folder, FolderId new_parent, std::string_view new_name);

 private:
  FileList& files_;
};

}  // namespace brindle
