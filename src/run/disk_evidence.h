#pragma once

// What the disk says of a renaming that was meant, and may or may not have been carried out. One thread.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "platform/folder_handle.h"

namespace brindle {

/// A renaming within one folder.
struct IntendedRenaming {
  std::string_view folder;  ///< path
  std::string_view old_name;
  std::string_view new_name;
  std::uint64_t inode = 0;   ///< of the entry to be renamed; 0 when not known
  bool may_be_half = false;  ///< it may have been cut off, and both names may be its own

  // Names that more than one renaming of the run is about say less.
  bool new_name_was_taken = false;  ///< another one of the run had it when the turn came, and kept it
  bool old_name_is_wanted = false;  ///< another one of the run may have it now
};

enum class Evidence {
  renamed,
  not_renamed,
  cannot_tell,  ///< what stands there fits neither, or both
  unreachable,  ///< the folder cannot be opened
};

/// Looks at directory entries. Nothing in the folders asked about may change meanwhile; questions about one folder in a
/// row are cheapest.
class DiskEvidence {
 public:
  /// Where moves take two steps, what `may_be_half` and looks so is settled as below: the mark may have been lost.
  Evidence ask(const IntendedRenaming& renaming);
  /// Settles a renaming that is marked as half done (see settle_two_step_move()).
  Evidence settle_half_step(const IntendedRenaming& renaming);

 private:
  void enter(std::string_view folder);
  bool lists(std::string_view name);
  static Evidence ask_names(const IntendedRenaming& renaming, bool has_old, bool has_new);
  bool looks_half(const IntendedRenaming& renaming, const EntryFacts& old_entry, const EntryFacts& new_entry);

  std::string path_;
  FolderHandle folder_;
  bool keeps_inodes_ = false;
  bool two_steps_ = false;
  bool listed_ = false;
  std::unordered_set<std::string> names_;  // filled when two names lead to one file
};

}  // namespace brindle
