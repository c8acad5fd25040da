#include "log/disk_evidence.h"

namespace brindle {

void DiskEvidence::enter(std::string_view folder) {
  if (folder == path_) return;
  path_ = folder;
  folder_ = FolderHandle::open(path_);
  keeps_inodes_ = folder_ && folder_.has_lasting_inodes();
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

}  // namespace brindle
