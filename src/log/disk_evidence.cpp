#include "log/disk_evidence.h"

#include <linux/magic.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>

#include "platform/two_step_move.h"

namespace brindle {
namespace {

// Disks whose inode numbers stay with the file across mounts and renames. FAT, exFAT and most network and FUSE disks
// make theirs up as they go.
constexpr std::array<std::uint64_t, 11> lasting_inodes = {
    EXT4_SUPER_MAGIC, BTRFS_SUPER_MAGIC,    XFS_SUPER_MAGIC,      F2FS_SUPER_MAGIC,     TMPFS_MAGIC,
    NFS_SUPER_MAGIC,  REISERFS_SUPER_MAGIC, 0x3153464A /* JFS */, 0x2FC12FC1 /* ZFS */, 0xCA451A4E /* bcachefs */,
    0x7366746E /* NTFS */};

bool keeps_inodes(const FolderHandle& folder) {
  struct statfs disk {};
  if (::fstatfs(folder.descriptor(), &disk) != 0) return false;
  const auto type = static_cast<std::uint64_t>(disk.f_type) & 0xFFFFFFFFU;
  return std::find(lasting_inodes.begin(), lasting_inodes.end(), type) != lasting_inodes.end();
}

}  // namespace

void DiskEvidence::enter(std::string_view folder) {
  if (folder == path_) return;
  path_ = folder;
  folder_ = FolderHandle::open(path_);
  keeps_inodes_ = folder_ && keeps_inodes(folder_);
  listed_ = false;
}

// Two hard links, or a disk on which both spellings lead to one entry: only the listing tells.
bool DiskEvidence::lists_only_new_name(std::string_view old_name, std::string_view new_name) {
  if (!listed_) {
    names_.clear();
    FolderReader reader;
    FolderEntry entry;
    for (reader.start(folder_); reader.next(entry);) names_.emplace(entry.name);
    listed_ = true;
  }
  return names_.contains(std::string(new_name)) && !names_.contains(std::string(old_name));
}

Evidence DiskEvidence::ask(const IntendedRenaming& renaming) {
  enter(renaming.folder);
  if (!folder_) return Evidence::none;
  EntryFacts old_entry;
  EntryFacts new_entry;
  const bool has_new = folder_.look_up(std::string(renaming.new_name).c_str(), new_entry);
  const bool has_old = folder_.look_up(std::string(renaming.old_name).c_str(), old_entry);
  bool renamed = has_new;
  if (has_new && has_old && new_entry.inode == old_entry.inode) {
    renamed = lists_only_new_name(renaming.old_name, renaming.new_name);
  } else if (has_new && renaming.inode != 0 && keeps_inodes_) {
    renamed = new_entry.inode == renaming.inode;
  } else if (has_new && has_old) {
    renamed = renaming.inode != 0 && new_entry.inode == renaming.inode;
  }
  return renamed ? Evidence::renamed : Evidence::not_renamed;
}

Evidence DiskEvidence::settle_half_step(const IntendedRenaming& renaming) {
  enter(renaming.folder);
  if (!folder_) return Evidence::none;
  listed_ = false;
  switch (settle_two_step_move(folder_, std::string(renaming.old_name).c_str(), folder_,
                               std::string(renaming.new_name).c_str(), renaming.inode)) {
    case SettledMove::not_moved:
      return Evidence::not_renamed;
    case SettledMove::moved:
      return Evidence::renamed;
    case SettledMove::unclear:
      break;
  }
  return Evidence::none;
}

}  // namespace brindle
