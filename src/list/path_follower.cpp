#include "list/path_follower.h"

namespace brindle {

void PathFollower::rename(FolderId folder, std::string_view old_name, std::string_view new_name) {
  FolderTable& folders = files_.folders();
  const FolderId renamed = folders.find_child(folder, old_name);
  if (renamed != FolderTable::none) folders.move(renamed, folder, new_name);
}

void PathFollower::move(FolderId folder, FolderId new_parent, std::string_view new_name) {
  FolderTable& folders = files_.folders();
  for (FolderId at = new_parent; at != FolderTable::root; at = folders.parent(at)) {
    if (at == folder) return;
  }
  folders.move(folder, new_parent, new_name);
}

}  // namespace brindle
