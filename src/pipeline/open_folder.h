#pragma once

// The folder at hand, held open. Going down a level opens one name below it instead of a whole path, which is what
// keeps trees of any depth cheap. One thread.

#include <utility>

#include "pipeline/folder_table.h"
#include "platform/folder_handle.h"

namespace brindle {

class OpenFolder {
 public:
  const FolderHandle& handle() const { return handle_; }
  FolderId folder() const { return folder_; }

  /// Turns to a folder; afterwards the handle is open, or its error says why not. With `by_path` nothing is made of
  /// what is open now: for paths that need not be true to the folders they were opened by.
  void open(const FolderTable& folders, FolderId folder, bool by_path = false) {
    folder = folders.resolve(folder);
    if (folder == folder_ && handle_ && !by_path) return;
    const bool goes_down = !by_path && handle_ && folder != FolderTable::root && folders.parent(folder) == folder_;
    FolderHandle next = goes_down ? handle_.open_child(folders.name(folder).data()) : FolderHandle();
    handle_ = next ? std::move(next) : FolderHandle::open(folders.path(folder));
    folder_ = folder;
  }
  void close() { *this = OpenFolder(); }

 private:
  FolderId folder_ = FolderTable::none;
  FolderHandle handle_;
};

}  // namespace brindle
