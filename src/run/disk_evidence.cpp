#include "run/disk_evidence.h"

#include "platform/move.h"

namespace brindle {

void DiskEvidence::enter(std::string_view folder) {
  if (folder == path_) return;
  path_ = folder;
  folder_ = FolderHandle::open_real(path_);
  keeps_inodes_ = folder_ && folder_.has_lasting_inodes();
  two_steps_ = folder_ && may_move_in_two_steps(folder_);
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

// A second name of the file, or a folder beside the one that was to be renamed.
bool DiskEvidence::looks_half(const IntendedRenaming& renaming, const EntryFacts& old_entry,
                              const EntryFacts& new_entry) {
  if (new_entry.inode == old_entry.inode) return lists(renaming.old_name) && lists(renaming.new_name);
  return new_entry.kind == EntryKind::folder && renaming.inode != 0 && old_entry.inode == renaming.inode;
}

Evidence DiskEvidence::ask(const IntendedRenaming& renaming) {
  enter(renaming.folder);
  if (!folder_) return Evidence::unreachable;
  if (two_steps_) {
    settle_names_aside(folder_, std::string(renaming.old_name).c_str(), std::string(renaming.new_name).c_str());
  }
  EntryFacts old_entry;
  EntryFacts new_entry;
  const bool has_new = folder_.look_up(std::string(renaming.new_name).c_str(), new_entry);
  const bool has_old = folder_.look_up(std::string(renaming.old_name).c_str(), old_entry);
  const bool has_both = has_new && has_old;
  if (has_both && two_steps_ && renaming.may_be_half && looks_half(renaming, old_entry, new_entry)) {
    return settle_half_step(renaming);
  }
  if (has_both && new_entry.inode == old_entry.inode) {
    if (renaming.old_name_is_wanted) {  // two hard links may both have moved up
      return renaming.new_name_was_taken ? Evidence::not_renamed : Evidence::renamed;
    }
    return lists(renaming.new_name) && !lists(renaming.old_name) ? Evidence::renamed : Evidence::not_renamed;
  }
  const bool shares_names = renaming.new_name_was_taken || renaming.old_name_is_wanted;
  if (shares_names && !keeps_inodes_) return ask_names(renaming, has_old, has_new);
  const bool knows_file = renaming.inode != 0 && (keeps_inodes_ || (has_new && has_old));
  if (has_new && (knows_file ? new_entry.inode == renaming.inode : !has_old)) return Evidence::renamed;
  if (has_old && (knows_file ? old_entry.inode == renaming.inode : !has_new)) return Evidence::not_renamed;
  return Evidence::cannot_tell;
}

// A new name that was free when the turn came is there for one reason only.
Evidence DiskEvidence::ask_names(const IntendedRenaming& renaming, bool has_old, bool has_new) {
  if (renaming.new_name_was_taken) return Evidence::not_renamed;
  if (has_new) return Evidence::renamed;
  return has_old ? Evidence::not_renamed : Evidence::cannot_tell;
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
