#pragma once

// Moving one directory entry, never onto another. Safe on any thread.
//
// On a disk that has no exclusive rename a move takes two steps: first the new name is made, exclusively, then the old
// one goes. In between the entry has both names, and whoever is stopped there has to settle it later.

#include <cstdint>

#include "platform/folder_handle.h"

namespace brindle {

/// Hears of a move in two steps, in time to write it down.
class MoveWatcher {
 public:
  virtual ~MoveWatcher() = default;
  /// The new name was free a moment ago, and is about to be made. From here until the move returns, the entry may have
  /// both names.
  virtual void half_step() noexcept = 0;
};

/// Moves an entry: a file by a hard link at the new name and the removal of the old one, a folder by a rename onto an
/// empty folder made for it. Returns 0 or errno; EEXIST: something stands at the target; ENOTSUP: the disk can do
/// neither.
///
/// No name is removed unless it leads to the file that has the other name. When another program puts a new file at the
/// old name meanwhile, that file stays there, and the move has succeeded.
///
/// `watcher` may be null, for files of our own: then there is nobody to settle a move that is cut off, so no name but
/// the two is used, at the cost of a blink between the last look at the old name and its removal.
[[nodiscard]] int move_in_two_steps(const FolderHandle& from_folder, const char* from, const FolderHandle& to_folder,
                                    const char* to, MoveWatcher* watcher);

/// Whether moves on the folder's disk may take two steps: where not, two names of one file are two hard links of a
/// person's, and none of an interrupted move.
bool may_move_in_two_steps(const FolderHandle& folder);

enum class SettledMove {
  not_moved,  ///< the entry has its old name
  moved,      ///< the entry has its new name
  unclear,    ///< the disk does not tell which of the two it is, or cannot be asked; nothing was removed
};

/// Settles a move in two steps that was cut off anywhere after half_step(): an entry that has both names loses the new
/// one again, an empty stand-in for a folder goes, and what lies under a name of our own gets its name back. `inode` is
/// that of the entry, 0 when it is not known. May itself be cut off and done again. Never removes the last name of a
/// file, nor a folder that holds anything; where the two names lead to different files, both stay.
[[nodiscard]] SettledMove settle_two_step_move(const FolderHandle& from_folder, const char* from,
                                               const FolderHandle& to_folder, const char* to, std::uint64_t inode);

/// The part of it that needs no mark: what lies under the names of our own that belong to these two names of a folder
/// gets its name back, or goes where the file has one of the two.
void settle_names_aside(const FolderHandle& folder, const char* from, const char* to);

/// Gives the entry `from` of one folder the name `to` in another (or the same). Returns 0, or errno; EEXIST means that
/// something stands at the target, and nothing has changed then. Names are NUL-terminated bytes.
///
/// renameat2(2) with RENAME_NOREPLACE, one step; on a disk that does not know the flag, move_in_two_steps(), of which
/// `watcher` hears (null: nobody writes it down). Where neither can be had the move fails with ENOTSUP: nothing is ever
/// moved on the strength of a look-up alone.
[[nodiscard]] int move_exclusively(const FolderHandle& from_folder, const char* from, const FolderHandle& to_folder,
                                   const char* to, MoveWatcher* watcher = nullptr);

/// Swaps two entries of a folder in one step: each gets the name of the other. Returns 0 or errno; ENOTSUP where the
/// disk or the system cannot do that.
[[nodiscard]] int exchange_names(const FolderHandle& folder, const char* one, const char* other);

/// The move for a name that changes in letter case alone, on a disk where both spellings name the same entry:
/// rename(2). The two names must differ in case only. Returns EEXIST unless they lead to the same file, and the folder
/// does not list both (two hard links are two files).
[[nodiscard]] int move_changing_case(const FolderHandle& folder, const char* from, const char* to);

}  // namespace brindle
