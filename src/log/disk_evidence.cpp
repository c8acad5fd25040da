#include "log/disk_evidence.h"

#include "platform/two_step_move.h"

namespace brindle {

void DiskEvidence::enter(std::string_view folder) {
  if (folder == path_) return;
  path_ = folder;
  folder_ = FolderHandle::open_real(path_);
  keeps_inodes_ = folder_ && folder_.has_lasting_inodes();
  listed_ = false;
}

// Of two names that lead to one file, hard links or not, the folder's listing tells which there are.
bool DiskEvidence::lists(std::string_view name) {
  if (!listed_) {
    names_.clear();
    FolderReader reader;
    FolderEntry entry;
    for (reader.start(folder_); reader.next(entry);) names_.emplace(entry.name);
    listed_ = true;
  }
  return names_.contains(std::string(name));
}

Evidence DiskEvidence::ask(const IntendedRenaming& renaming) {
  enter(renaming.folder);
  if (!folder_) return Evidence::unreachable;
  EntryFacts old_entry;
  EntryFacts new_entry;
  const bool has_new = folder_.look_up(std::string(renaming.new_name).c_str(), new_entry);
  const bool has_old = folder_.look_up(std::string(renaming.old_name).c_str(), old_entry);
  if (has_new && has_old && new_entry.inode == old_entry.inode) {
    // The run meant the new name to be made: where that takes a step of its own, the mark of it may have been lost.
    const bool lists_new = lists(renaming.new_name);
    if (lists_new && lists(renaming.old_name) && may_move_in_two_steps(folder_)) return settle_half_step(renaming);
    return lists_new && !lists(renaming.old_name) ? Evidence::renamed : Evidence::not_renamed;
  }
  const bool knows_file = renaming.inode != 0 && (keeps_inodes_ || (has_new && has_old));
  if (has_new && (knows_file ? new_entry.inode == renaming.inode : !has_old)) return Evidence::renamed;
  if (has_old && (knows_file ? old_entry.inode == renaming.inode : !has_new)) return Evidence::not_renamed;
  return Evidence::cannot_tell;
}

Evidence DiskEvidence::settle_half_step(const IntendedRenaming& renaming) {
  enter(renaming.folder);
  if (!folder_) return Evidence::unreachable;
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
  return Evidence::cannot_tell;
}

}  // namespace brindle
