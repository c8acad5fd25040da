#include "pipeline/folder_table.h"

#include "platform/hash.h"

namespace brindle {

std::size_t FolderTable::KeyHash::operator()(const Key& key) const { return hash_bytes(key.name, key.parent); }

FolderTable::FolderTable() { nodes_.push_back({none, {}}); }

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
  nodes_.push_back({parent, kept});
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

void FolderTable::append_path(FolderId folder, std::string& path) const {
  if (folder == root) {
    path.push_back('/');
    return;
  }
  std::size_t size = 0;
  for (FolderId at = folder; at != root; at = nodes_[at].parent) size += nodes_[at].name.size() + 1;
  // Filled from the end: a path is told from its last folder upwards.
  std::size_t position = path.size() + size;
  path.resize(position);
  for (FolderId at = folder; at != root; at = nodes_[at].parent) {
    const std::string_view name = nodes_[at].name;
    position -= name.size();
    path.replace(position, name.size(), name);
    path[--position] = '/';
  }
}

void FolderTable::move(FolderId folder, FolderId parent, std::string_view name) {
  Node& node = nodes_[folder];
  children_.erase(Key{node.parent, node.name});
  node = {parent, names_.keep(name)};
  children_.emplace(Key{parent, node.name}, folder);
}

}  // namespace brindle
