#pragma once

// The folder at hand, held open. One thread.

#include <optional>

#include "list/folder_table.h"
#include "platform/folder_handle.h"

namespace brindle {

/// Turns from folder to folder of a list, never through a symbolic link. Going on to a folder close by goes through the
/// one that is open where paths are long, so trees of any depth cost a few names a folder.
class OpenFolder {
 public:
  const FolderHandle& handle() const { return handle_; }
  FolderId folder() const { return folder_; }

  /// Turns to a folder; afterwards the handle is open, or its error says why not: ESTALE when another folder than the
  /// one that was listed stands there.
  void open(const FolderTable& folders, FolderId folder);
  /// The same for a folder that is going to be listed: whichever stands there.
  void open_to_list(const FolderTable& folders, FolderId folder);
  void close() { *this = OpenFolder(); }

 private:
  FolderHandle reach(const FolderTable& folders, FolderId folder) const;
  std::optional<FolderHandle> reach_from_here(const FolderTable& folders, FolderId folder) const;

  FolderId folder_ = FolderTable::none;
  FolderHandle handle_;
};

/// Whether a folder is the one that was listed, as far as the disk can tell. True where nothing is known of it.
bool is_as_listed(const FolderTable& folders, FolderId folder, const FolderHandle& handle);

}  // namespace brindle
