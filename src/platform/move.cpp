#include "platform/move.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <string>
#include <string_view>

namespace brindle {
namespace {

/// A name in an open folder.
struct Place {
  int folder = -1;
  const char* name = nullptr;
};

/// What a name leads to.
struct Seen {
  int error = 0;  // ENOENT: nothing has the name
  struct stat status {};

  bool is_there() const { return error == 0; }
  bool is_folder() const { return is_there() && S_ISDIR(status.st_mode); }
};

// Some FUSE disks give the number of a removed folder to the next one at once, and while another thread renames, the
// system then takes the name for a stale one: for a blink. Returns 0 or errno.
template <class Call>
int while_not_stale(Call call) {
  constexpr int most_tries = 100;
  for (int tries = 1; call() != 0; ++tries) {
    if (errno != ESTALE || tries == most_tries) return errno;
    ::usleep(1000);
  }
  return 0;
}

Seen look(const Place& place) {
  Seen seen;
  seen.error = while_not_stale([&] { return ::fstatat(place.folder, place.name, &seen.status, AT_SYMLINK_NOFOLLOW); });
  return seen;
}

int remove_folder(const Place& place) {
  return while_not_stale([&] { return ::unlinkat(place.folder, place.name, AT_REMOVEDIR); });
}

int unlink(const Place& place) {
  return ::unlinkat(place.folder, place.name, 0) == 0 ? 0 : errno;
}

bool are_one_file(const Seen& a, const Seen& b) {
  return a.is_there() && b.is_there() && a.status.st_dev == b.status.st_dev && a.status.st_ino == b.status.st_ino;
}

bool look_alike(const struct stat& a, const struct stat& b) {
  return a.st_mode == b.st_mode && a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
         a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

// Whether `name` leads to the file just linked to `kept`. Some network disks give each name a number of its own and
// count no links; there the old name counts as long as it is what it was before the link.
bool leads_to_linked_file(const Seen& name, const Seen& kept, const Seen& before) {
  if (!name.is_there() || !kept.is_there()) return false;
  if (are_one_file(name, kept)) return true;
  return kept.status.st_nlink == 1 && are_one_file(name, before) && look_alike(name.status, before.status) &&
         look_alike(kept.status, before.status);
}

constexpr int most_asides = 4;  // the later ones only for what an interrupted move has left under the first

// The name that a place's entry gets while it is decided whether it may go: found again from the place's own name.
std::string aside_name(std::string_view name, int number) {
  std::uint64_t hash = 0xCBF29CE484222325U;  // FNV-1a
  for (const char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
  return fmt::format(".brindle-{:016x}.old{}", hash, number);
}

std::string free_aside_name(const Place& place) {
  for (int number = 0; number < most_asides; ++number) {
    std::string aside = aside_name(place.name, number);
    if (look({place.folder, aside.c_str()}).error == ENOENT) return aside;
  }
  return {};
}

constexpr mode_t stand_in_mode = S_ISVTX | S_IRWXU;  // which nobody else gives a new folder

// Disks that keep no modes show the same one everywhere.
bool is_stand_in(const Seen& seen, const Place& place) {
  struct stat around {};
  if (!seen.is_folder() || seen.status.st_uid != ::geteuid() || ::fstat(place.folder, &around) != 0) return false;
  return (seen.status.st_mode & 07777U) == stand_in_mode || seen.status.st_mode == around.st_mode;
}

// A mkdir that says ESTALE has made the folder. The system tries once more by itself then, and says EEXIST, as network
// disks do when an answer got lost; so a stand-in where nothing was a moment ago is ours.
int make_stand_in(const Place& to) {
  if (look(to).error != ENOENT) return EEXIST;
  if (::mkdirat(to.folder, to.name, stand_in_mode) == 0 || errno == ESTALE) return 0;
  const int error = errno;
  return error == EEXIST && is_stand_in(look(to), to) ? 0 : error;
}

// Renaming a folder onto an empty folder is allowed; that the target is our own and empty is seen to by mkdir and the
// kernel.
int move_onto_own_folder(const Place& from, const Place& to) {
  const int not_made = make_stand_in(to);
  if (not_made != 0) return not_made;
  const int error = while_not_stale([&] { return ::renameat(from.folder, from.name, to.folder, to.name); });
  if (error == 0) return 0;
  const bool refused = error == EEXIST || error == ENOTEMPTY;
  if (remove_folder(to) != 0 && refused) return EEXIST;  // somebody has put something there
  return refused ? ENOTSUP : error;
}

// For a name of our own, which nobody else changes.
int give_name(const Place& aside, const Place& name) {
  if (look(aside).is_folder()) return move_onto_own_folder(aside, name);
  if (::linkat(aside.folder, aside.name, name.folder, name.name, 0) != 0) return errno;
  return unlink(aside);
}

/// Removes `name` if it leads to the file that `is_second_name` wants. A file that another program puts there between
/// the look and the removal would be lost; so the entry is taken aside first, and looked at where nobody else reaches
/// it. Returns errno when that could not be done; else `name` is gone, or leads elsewhere.
template <class IsSecondName>
int remove_second_name(const Place& name, IsSecondName is_second_name) {
  const std::string aside_text = free_aside_name(name);
  if (aside_text.empty()) return EBUSY;
  const Place aside{name.folder, aside_text.c_str()};
  if (::renameat(name.folder, name.name, aside.folder, aside.name) != 0) return errno == ENOENT ? 0 : errno;
  // What cannot be removed or given back, because the name has been taken once more, stays under ours.
  if (is_second_name(look(aside))) {
    unlink(aside);
  } else {
    give_name(aside, name);
  }
  return 0;
}

int remove_old_name(const Place& from, const Place& to, const Seen& before, bool is_watched) {
  const Seen kept = look(to);
  const Seen old = look(from);
  if (!kept.is_there()) return kept.error;
  // Gone, or another file by now: the one that was to be moved has its new name.
  if (old.error == ENOENT || (old.is_there() && !leads_to_linked_file(old, kept, before))) return 0;
  const auto is_linked = [&](const Seen& aside) { return leads_to_linked_file(aside, look(to), before); };
  const int error = is_watched ? remove_second_name(from, is_linked) : unlink(from);
  if (error != 0 && are_one_file(look(from), look(to))) unlink(to);
  return error;
}

int link_and_remove(const Place& from, const Place& to, const Seen& before, bool is_watched) {
  if (::linkat(from.folder, from.name, to.folder, to.name, 0) == 0)
    return remove_old_name(from, to, before, is_watched);
  return errno == EPERM || errno == EMLINK || errno == ENOSYS ? ENOTSUP : errno;
}

// What a stopped remove_second_name() has left of `name`: it goes when the file has one of the two names, else it gets
// its own back.
void settle_aside(const Place& name, const Place& other) {
  for (int number = 0; number < most_asides; ++number) {
    const std::string text = aside_name(name.name, number);
    const Place aside{name.folder, text.c_str()};
    const Seen seen = look(aside);
    if (!seen.is_there()) return;
    if (are_one_file(seen, look(other)) || are_one_file(seen, look(name))) {
      unlink(aside);
    } else {
      give_name(aside, name);  // when the name is taken, both stay
    }
  }
}

SettledMove which_is(const Seen& old, const Seen& made, std::uint64_t inode) {
  if (inode != 0 && made.status.st_ino == inode) return SettledMove::moved;
  return inode != 0 && old.status.st_ino == inode ? SettledMove::not_moved : SettledMove::unclear;
}

SettledMove settle_both(const Place& from, const Place& to, const Seen& old, const Seen& made, std::uint64_t inode) {
  if (are_one_file(old, made)) {
    if (made.is_folder()) return SettledMove::unclear;
    const int error = remove_second_name(to, [&](const Seen& aside) { return are_one_file(aside, look(from)); });
    return error == 0 ? SettledMove::not_moved : SettledMove::unclear;
  }
  const SettledMove found = which_is(old, made, inode);
  const bool may_be_stand_in = old.is_folder() && made.is_folder() && found != SettledMove::moved;
  if (may_be_stand_in && remove_folder(to) == 0) return SettledMove::not_moved;
  return found;
}

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

bool may_move_in_two_steps(const FolderHandle& folder) {
  constexpr std::array<std::uint64_t, 6> exclusive = {EXT4_SUPER_MAGIC, BTRFS_SUPER_MAGIC, F2FS_SUPER_MAGIC,
                                                      TMPFS_MAGIC,      MSDOS_SUPER_MAGIC, 0x58465342 /* XFS */};
  struct statfs disk {};
  if (::fstatfs(folder.descriptor(), &disk) != 0) return false;
  return std::ranges::find(exclusive, static_cast<std::uint64_t>(disk.f_type) & 0xFFFFFFFFU) == exclusive.end();
}

int move_in_two_steps(const FolderHandle& from_folder, const char* from, const FolderHandle& to_folder, const char* to,
                      MoveWatcher* watcher) {
  const Place source{from_folder.descriptor(), from};
  const Place target{to_folder.descriptor(), to};
  const Seen before = look(source);
  if (!before.is_there()) return before.error;
  // What is seen half done later must be ours: the mark is made only where nothing has the new name.
  const int at_target = look(target).error;
  if (at_target != ENOENT) return at_target == 0 ? EEXIST : at_target;
  if (watcher != nullptr) watcher->half_step();
  return before.is_folder() ? move_onto_own_folder(source, target)
                            : link_and_remove(source, target, before, watcher != nullptr);
}

void settle_names_aside(const FolderHandle& folder, const char* from, const char* to) {
  const Place source{folder.descriptor(), from};
  const Place target{folder.descriptor(), to};
  settle_aside(source, target);
  settle_aside(target, source);
}

SettledMove settle_two_step_move(const FolderHandle& from_folder, const char* from, const FolderHandle& to_folder,
                                 const char* to, std::uint64_t inode) {
  const Place source{from_folder.descriptor(), from};
  const Place target{to_folder.descriptor(), to};
  settle_aside(source, target);
  settle_aside(target, source);
  const Seen old = look(source);
  const Seen made = look(target);
  if (old.is_there() && made.is_there()) return settle_both(source, target, old, made, inode);
  if (old.is_there() && made.error == ENOENT) return SettledMove::not_moved;
  return made.is_there() && old.error == ENOENT ? SettledMove::moved : SettledMove::unclear;
}

int move_exclusively(const FolderHandle& from_folder, const char* from, const FolderHandle& to_folder, const char* to,
                     MoveWatcher* watcher) {
  if (::renameat2(from_folder.descriptor(), from, to_folder.descriptor(), to, RENAME_NOREPLACE) == 0) return 0;
  return is_refusal_of_flag(errno) ? move_in_two_steps(from_folder, from, to_folder, to, watcher) : errno;
}

int exchange_names(const FolderHandle& folder, const char* one, const char* other) {
  if (::renameat2(folder.descriptor(), one, folder.descriptor(), other, RENAME_EXCHANGE) == 0) return 0;
  return is_refusal_of_flag(errno) ? ENOTSUP : errno;
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
