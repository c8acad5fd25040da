#include "platform/move.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

#include "platform/file_name.h"
#include "platform/unicode_fold.h"

namespace brindle {
namespace {

// Which entry kinds a fallback can serve is the disk's business: these mean "not here, not this way".
bool is_refusal_of_flag(int error) {
  return error == EINVAL || error == ENOSYS || error == ENOTSUP;
}

int link_and_remove(int from_folder, const char* from, int to_folder, const char* to) {
  if (::linkat(from_folder, from, to_folder, to, 0) != 0) {
    return errno == EPERM || errno == EMLINK || errno == ENOSYS ? ENOTSUP : errno;
  }
  if (::unlinkat(from_folder, from, 0) == 0) return 0;
  const int error = errno;
  ::unlinkat(to_folder, to, 0);
  return error;
}

// Renaming a folder onto an empty folder is allowed; that the target is our own and empty is seen to by mkdir and the
// kernel.
int move_onto_own_folder(int from_folder, const char* from, int to_folder, const char* to) {
  if (::mkdirat(to_folder, to, 0700) != 0) return errno;
  if (::renameat(from_folder, from, to_folder, to) == 0) return 0;
  const int error = errno;
  ::unlinkat(to_folder, to, AT_REMOVEDIR);
  return error;
}

int move_without_flag(int from_folder, const char* from, int to_folder, const char* to) {
  struct stat status {};
  if (::fstatat(from_folder, from, &status, AT_SYMLINK_NOFOLLOW) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return move_onto_own_folder(from_folder, from, to_folder, to);
  return link_and_remove(from_folder, from, to_folder, to);
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

int move_exclusively(const FolderHandle& from_folder, const char* from, const FolderHandle& to_folder, const char* to) {
  const int from_at = from_folder.descriptor();
  const int to_at = to_folder.descriptor();
  if (::renameat2(from_at, from, to_at, to, RENAME_NOREPLACE) == 0) return 0;
  return is_refusal_of_flag(errno) ? move_without_flag(from_at, from, to_at, to) : errno;
}

int move_changing_case(const FolderHandle& folder, const char* from, const char* to) {
  EntryFacts old_entry;
  EntryFacts new_entry;
  if (!folder.look_up(from, old_entry)) return errno;
  const bool same_file = differ_in_case_only(from, to) && folder.look_up(to, new_entry) &&
                         old_entry.inode == new_entry.inode && old_entry.device == new_entry.device;
  if (!same_file || lists_both(folder, from, to)) return EEXIST;
  return ::renameat(folder.descriptor(), from, folder.descriptor(), to) == 0 ? 0 : errno;
}

bool differ_in_case_only(std::string_view a, std::string_view b) {
  return a != b && folded(decode_file_name(a)) == folded(decode_file_name(b));
}

}  // namespace brindle
