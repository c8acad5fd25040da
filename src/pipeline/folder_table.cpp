#include "pipeline/folder_table.h"

#include "platform/hash.h"

namespace brindle {

std::size_t FolderTable::KeyHash::operator()(const Key& key) const {
  return hash_bytes(key.name, key.parent);
}

FolderTable::FolderTable() {
  nodes_.push_back({});
}

FolderId FolderTable::intern(std::string_view path) {
  FolderId folder = root;
  while (!path.empty()) {
    const std::size_t slash = path.find('/');
    const std::string_view name = path.substr(0, slash);
    if (!name.empty()) folder = child(folder, name);
    path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
  }
  return folder;
}

FolderId FolderTable::child(FolderId parent, std::string_view name) {
  const FolderId known = find_child(parent, name);
  if (known != none) return known;
  const auto folder = static_cast<FolderId>(nodes_.size());
  const std::string_view kept = names_.keep(name);
  nodes_.push_back({parent, kept, none});
  children_.emplace(Key{parent, kept}, folder);
  return folder;
}

FolderId FolderTable::find_child(FolderId parent, std::string_view name) const {
  const auto found = children_.find(Key{parent, name});
  return found == children_.end() ? none : found->second;
}

std::string FolderTable::path(FolderId folder) const {
  std::string path;
  append_path(folder, path);
  return path;
}

FolderId FolderTable::resolve(FolderId folder) const {
  while (nodes_[folder].alias != none) folder = nodes_[folder].alias;
  return folder;
}

void FolderTable::append_path(FolderId folder, std::string& path) const {
  const FolderId start = resolve(folder);
  if (start == root) {
    path.push_back('/');
    return;
  }
  std::size_t size = 0;
  for (FolderId at = start; at != root; at = resolve(nodes_[at].parent)) size += nodes_[at].name.size() + 1;
  // Filled from the end: a path is told from its last folder upwards.
  std::size_t position = path.size() + size;
  path.resize(position);
  for (FolderId at = start; at != root; at = resolve(nodes_[at].parent)) {
    const std::string_view name = nodes_[at].name;
    position -= name.size();
    path.replace(position, name.size(), name);
    path[--position] = '/';
  }
}

void FolderTable::detach(FolderId folder) {
  children_.erase(Key{nodes_[folder].parent, nodes_[folder].name});
}

FolderId FolderTable::attach(FolderId folder, FolderId parent, std::string_view name) {
  const FolderId taken = find_child(parent, name);
  if (taken != none) return taken;
  nodes_[folder].parent = parent;
  nodes_[folder].name = names_.keep(name);
  children_.emplace(Key{parent, nodes_[folder].name}, folder);
  return folder;
}

}  // namespace brindle
