#include "log/disk_evidence.h"

namespace brindle {

void DiskEvidence::enter(std::string_view folder) {
  if (folder == path_) return;
  path_ = folder;
  folder_ = FolderHandle::open_real(path_);
  keeps_inodes_ = folder_ && folder_.has_lasting_inodes();
  listed_ = false;
}

// Two hard links, or a disk on which both spellings lead to one entry: only the listing tells.
Evidence DiskEvidence::evidence_of_one_file(std::string_view old_name, std::string_view new_name) {
  if (!listed_) {
    names_.clear();
    FolderReader reader;
    FolderEntry entry;
    for (reader.start(folder_); reader.next(entry);) names_.emplace(entry.name);
    listed_ = true;
  }
  const bool renamed = names_.contains(std::string(new_name)) && !names_.contains(std::string(old_name));
  return renamed ? Evidence::renamed : Evidence::not_renamed;
}

Evidence DiskEvidence::ask(const IntendedRenaming& renaming) {
  enter(renaming.folder);
  if (!folder_) return Evidence::unreachable;
  EntryFacts old_entry;
  EntryFacts new_entry;
  const bool has_new = folder_.look_up(std::string(renaming.new_name).c_str(), new_entry);
  const bool has_old = folder_.look_up(std::string(renaming.old_name).c_str(), old_entry);
  if (has_new && has_old && new_entry.inode == old_entry.inode)
    return evidence_of_one_file(renaming.old_name, renaming.new_name);
  const bool knows_file = renaming.inode != 0 && (keeps_inodes_ || (has_new && has_old));
  if (has_new && (knows_file ? new_entry.inode == renaming.inode : !has_old)) return Evidence::renamed;
  if (has_old && (knows_file ? old_entry.inode == renaming.inode : !has_new)) return Evidence::not_renamed;
  return Evidence::cannot_tell;
}

}  // namespace brindle
