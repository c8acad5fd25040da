#pragma once

// Keeps the paths of the list true while folders in it are renamed.
//
// The rule is textual, as file lists of this kind have always had it: when `old` becomes `target`, every item whose
// folder's path begins with the text `old` has each `old` in its path replaced by `target`. That moves what lies below
// the renamed folder, and also what lies in a sibling whose name merely begins with the same characters (whose items
// then point to where nothing is). The work done grows with the folders that move, not with the list.
//
// One thread; the list must not be sorted, added to or removed from in between.

#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "pipeline/file_list.h"

namespace brindle {

class PathFollower {
 public:
  explicit PathFollower(FileList& files);

  /// The entry `old_name` of `folder` has been renamed to `new_name`. The renamed item's own row is not touched.
  void follow(FolderId folder, std::string_view old_name, std::string_view new_name);

  /// A folder has moved, it alone and what lies below it; names that merely begin like its own stay. Nothing happens
  /// when it would come to lie below itself.
  void move(FolderId folder, FolderId new_parent, std::string_view new_name);

  /// Whether paths in this folder are true to the text but perhaps not to the disk: who acts on one makes sure first
  /// that it leads to the file it is thought to be.
  bool is_doubtful(FolderId folder) const;

 private:
  using Place = std::pair<FolderId, std::string_view>;  // parent and name

  std::vector<FolderId> children_beginning_with(FolderId parent, std::string_view start) const;
  void rename_folders(const std::vector<FolderId>& moving, std::string_view old_name, std::string_view new_name);
  void place(FolderId folder, FolderId parent, std::string_view name);
  void index_all();
  void index(FolderId folder);
  void index_new();
  bool path_recurs_below(FolderId folder, std::string_view old_name) const;
  bool lies_below(FolderId folder, FolderId ancestor, std::string_view child_start) const;
  void rewrite_texts(const std::string& old_path, const std::string& target);

  FileList& files_;
  FolderId known_ = 0;  // folders from this one on have come since they were indexed
  std::map<Place, FolderId> places_;
  std::unordered_set<std::string_view> top_names_;
  std::vector<FolderId> named_like_top_;  // folders further down that bear the name of a top-level one, now or once
  std::unordered_set<FolderId> doubtful_;
  bool all_doubtful_ = false;
};

}  // namespace brindle
