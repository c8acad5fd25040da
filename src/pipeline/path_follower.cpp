#include "pipeline/path_follower.h"

#include <algorithm>

namespace brindle {
namespace {

std::string join(std::string path, std::string_view name) {
  if (path.back() != '/') path.push_back('/');
  return path.append(name);
}

void replace_all(std::string& text, std::string_view find, std::string_view replacement) {
  for (std::size_t at = text.find(find); at != std::string::npos; at = text.find(find, at + replacement.size())) {
    text.replace(at, find.size(), replacement);
  }
}

}  // namespace

PathFollower::PathFollower(FileList& files) : files_(files) {
  index_all();
}

void PathFollower::index_all() {
  const FolderTable& folders = files_.folders();
  places_.clear();
  top_names_.clear();
  named_like_top_.clear();
  for (FolderId folder = 1; folder < folders.size(); ++folder) {
    if (folders.parent(folder) == FolderTable::root) top_names_.insert(folders.name(folder));
  }
  known_ = 1;
  index_new();
}

void PathFollower::index_new() {
  for (; known_ < files_.folders().size(); ++known_) index(known_);
}

void PathFollower::index(FolderId folder) {
  const FolderTable& folders = files_.folders();
  if (folders.resolve(folder) != folder) return;
  const std::string_view name = folders.name(folder);
  places_.emplace(Place{folders.parent(folder), name}, folder);
  if (folders.parent(folder) != FolderTable::root && top_names_.contains(name)) named_like_top_.push_back(folder);
}

std::vector<FolderId> PathFollower::children_beginning_with(FolderId parent, std::string_view start) const {
  std::vector<FolderId> children;
  for (auto at = places_.lower_bound(Place{parent, start}); at != places_.end(); ++at) {
    if (at->first.first != parent || !at->first.second.starts_with(start)) break;
    children.push_back(at->second);
  }
  return children;
}

void PathFollower::follow(FolderId folder, std::string_view old_name, std::string_view new_name) {
  const FolderTable& folders = files_.folders();
  folder = folders.resolve(folder);
  if (folder == FolderTable::root || path_recurs_below(folder, old_name)) {
    const std::string location = folders.path(folder);
    rewrite_texts(join(location, old_name), join(location, new_name));
    return;
  }
  rename_folders(children_beginning_with(folder, old_name), old_name, new_name);
}

// All leave their places before the first takes its new one: "a" may become "ab" while "ab" becomes "abb".
void PathFollower::rename_folders(const std::vector<FolderId>& moving, std::string_view old_name,
                                  std::string_view new_name) {
  FolderTable& folders = files_.folders();
  for (const FolderId folder : moving) {
    places_.erase(Place{folders.parent(folder), folders.name(folder)});
    folders.detach(folder);
  }
  for (const FolderId folder : moving) {
    const std::string_view rest = folders.name(folder).substr(old_name.size());
    if (!rest.empty()) doubtful_.insert(folder);
    place(folder, folders.parent(folder), std::string(new_name).append(rest));
  }
}

void PathFollower::move(FolderId folder, FolderId new_parent, std::string_view new_name) {
  FolderTable& folders = files_.folders();
  index_new();
  for (FolderId at = folders.resolve(new_parent); at != FolderTable::root; at = folders.resolve(folders.parent(at))) {
    if (at == folder) return;
  }
  places_.erase(Place{folders.parent(folder), folders.name(folder)});
  folders.detach(folder);
  place(folder, folders.resolve(new_parent), new_name);
}

// Two folders that have come to the same path become one, and so do their subfolders of the same names.
void PathFollower::place(FolderId folder, FolderId parent, std::string_view name) {
  FolderTable& folders = files_.folders();
  const FolderId there = folders.attach(folder, parent, name);
  if (there == folder) {
    index(folder);
    return;
  }
  const std::vector<FolderId> children = children_beginning_with(folder, {});
  for (const FolderId child : children) {
    places_.erase(Place{folder, folders.name(child)});
    folders.detach(child);
  }
  folders.make_alias(folder, there);
  doubtful_.insert(there);
  for (const FolderId child : children) place(child, there, std::string(folders.name(child)));
}

bool PathFollower::is_doubtful(FolderId folder) const {
  if (all_doubtful_) return true;
  if (doubtful_.empty()) return false;
  const FolderTable& folders = files_.folders();
  for (FolderId at = folders.resolve(folder); at != FolderTable::root; at = folders.resolve(folders.parent(at))) {
    if (doubtful_.contains(at)) return true;
  }
  return false;
}

bool PathFollower::lies_below(FolderId folder, FolderId ancestor, std::string_view child_start) const {
  const FolderTable& folders = files_.folders();
  FolderId below = folder;
  for (FolderId at = folders.resolve(folders.parent(below)); at != ancestor;
       at = folders.resolve(folders.parent(below))) {
    if (at == FolderTable::root) return false;
    below = at;
  }
  return folders.name(below).starts_with(child_start);
}

// Whether the renamed folder's whole path stands once more in the path of something below it, as in a copy of
// "/home/ann" kept inside /home/ann. It can only begin where a folder further down bears the name of the top-level
// folder.
bool PathFollower::path_recurs_below(FolderId folder, std::string_view old_name) const {
  if (named_like_top_.empty()) return false;
  const FolderTable& folders = files_.folders();
  std::vector<std::string_view> names;
  for (FolderId at = folder; at != FolderTable::root; at = folders.resolve(folders.parent(at)))
    names.push_back(folders.name(at));
  std::reverse(names.begin(), names.end());
  return std::any_of(named_like_top_.begin(), named_like_top_.end(), [&](FolderId start) {
    FolderId at = folders.resolve(start);
    if (folders.name(at) != names.front() || !lies_below(at, folder, old_name)) return false;
    for (std::size_t i = 1; i < names.size() && at != FolderTable::none; ++i) at = folders.find_child(at, names[i]);
    return at != FolderTable::none;
  });
}

// The rule word for word, over the whole list: for the rare case that the other way cannot express.
void PathFollower::rewrite_texts(const std::string& old_path, const std::string& target) {
  FolderTable& folders = files_.folders();
  const auto known = static_cast<FolderId>(folders.size());
  std::vector<bool> begins(known);
  for (FolderId folder = 0; folder < known; ++folder) begins[folder] = folders.path(folder).starts_with(old_path);
  for (std::size_t row = 0; row < files_.size(); ++row) {
    if (!begins[files_[row].folder]) continue;
    std::string path = files_.path(row);
    replace_all(path, old_path, target);
    const std::size_t slash = path.rfind('/');
    files_.set_path(row, folders.intern(std::string_view(path).substr(0, slash)),
                    std::string_view(path).substr(slash + 1));
  }
  index_all();  // there may be new folders, at the top too
  all_doubtful_ = true;
}

}  // namespace brindle
