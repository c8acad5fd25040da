#pragma once

// Moving one directory entry, never onto another. Safe on any thread.

#include "platform/folder_handle.h"
#include "platform/two_step_move.h"

namespace brindle {

/// Gives the entry `from` of one folder the name `to` in another (or the same). Returns 0, or errno; EEXIST means that
/// something stands at the target, and nothing has changed then. Names are NUL-terminated bytes.
///
/// renameat2(2) with RENAME_NOREPLACE, one step; on a disk that does not know the flag, move_in_two_steps(), of which
/// `watcher` hears (null: nobody writes it down). Where neither can be had the move fails with ENOTSUP: nothing is ever
/// moved on the strength of a look-up alone.
[[nodiscard]] int move_exclusively(const FolderHandle& from_folder, const char* from, const FolderHandle& to_folder,
                                   const char* to, MoveWatcher* watcher = nullptr);

/// The move for a name that changes in letter case alone, on a disk where both spellings name the same entry:
/// rename(2). The two names must differ in case only. Returns EEXIST unless they lead to the same file, and the folder
/// does not list both (two hard links are two files).
[[nodiscard]] int move_changing_case(const FolderHandle& folder, const char* from, const char* to);

}  // namespace brindle
