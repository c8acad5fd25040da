#include "platform/move.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

namespace brindle {
namespace {

bool is_refusal_of_flag(int error) {
  return error == EINVAL || error == ENOSYS || error == ENOTSUP;
}

// Some disks that ignore case list a name in other letters than it was given, so either spelling may be the listed one;
// what counts is that there are not two entries.
bool lists_both(const FolderHandle& folder, std::string_view from, std::string_view to) {
  FolderReader reader;
  FolderEntry entry;
  int found = 0;
  for (reader.start(folder); reader.next(entry);) found += entry.name == from || entry.name == to ? 1 : 0;
  return found > 1 || reader.error() != 0;
}

}  // namespace

int move_exclusively(const FolderHandle& from_folder, const char* from, const FolderHandle& to_folder, const char* to,
                     MoveWatcher* watcher) {
  if (::renameat2(from_folder.descriptor(), from, to_folder.descriptor(), to, RENAME_NOREPLACE) == 0) return 0;
  return is_refusal_of_flag(errno) ? move_in_two_steps(from_folder, from, to_folder, to, watcher) : errno;
}

int move_changing_case(const FolderHandle& folder, const char* from, const char* to) {
  EntryFacts old_entry;
  EntryFacts new_entry;
  if (!folder.look_up(from, old_entry)) return errno;
  const bool same_file =
      folder.look_up(to, new_entry) && old_entry.inode == new_entry.inode && old_entry.device == new_entry.device;
  if (!same_file || lists_both(folder, from, to)) return EEXIST;
  return ::renameat(folder.descriptor(), from, folder.descriptor(), to) == 0 ? 0 : errno;
}

}  // namespace brindle
