#include "list/folder_table.h"

#include <algorithm>
#include <utility>

#include "text/hash.h"

namespace brindle {

std::size_t FolderTable::KeyHash::operator()(const Key& key) const {
  return hash_bytes(key.name, key.parent);
}

FolderTable::FolderTable() {
  nodes_.push_back({});
}

FolderTable::Node FolderTable::node(FolderId parent, std::string_view name) {
  Node node;
  node.parent = parent;
  node.name_data = name.data();
  node.name_size = static_cast<std::uint32_t>(name.size());
  return node;
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
  nodes_.push_back(node(parent, kept));
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
  for (FolderId at = folder; at != root; at = nodes_[at].parent) size += nodes_[at].name_size + 1;
  // Filled from the end: a path is told from its last folder upwards.
  std::size_t position = path.size() + size;
  path.resize(position);
  for (FolderId at = folder; at != root; at = nodes_[at].parent) {
    const std::string_view name = nodes_[at].name();
    position -= name.size();
    path.replace(position, name.size(), name);
    path[--position] = '/';
  }
}

void FolderTable::move(FolderId folder, FolderId new_parent, std::string_view new_name) {
  Node& node = nodes_[folder];
  const auto known = children_.find(Key{node.parent, node.name()});
  if (known != children_.end() && known->second == folder) children_.erase(known);
  children_.erase(Key{new_parent, new_name});  // its key may be another folder's text
  const std::string_view kept = names_.keep(new_name);
  node.parent = new_parent;
  node.name_data = kept.data();
  node.name_size = static_cast<std::uint32_t>(kept.size());
  children_.emplace(Key{new_parent, kept}, folder);
}

void FolderTable::rename_children(FolderId parent, std::span<const NameChange> changes) {
  std::vector<std::pair<FolderId, std::string_view>> renamed;
  for (const NameChange& change : changes) {
    const auto known = children_.find(Key{parent, change.old_name});
    if (known == children_.end()) continue;
    renamed.emplace_back(known->second, change.new_name);
    children_.erase(known);
  }
  for (const auto& [folder, new_name] : renamed) move(folder, parent, new_name);
}

std::optional<FolderIdentity> FolderTable::identity(FolderId folder) const {
  const Node& node = nodes_[folder];
  if (node.device == 0) return std::nullopt;
  return FolderIdentity{devices_[node.device], node.inode};
}

void FolderTable::set_identity(FolderId folder, const FolderIdentity& identity) {
  auto device = std::find(devices_.begin() + 1, devices_.end(), identity.device);
  if (device == devices_.end()) device = devices_.insert(device, identity.device);
  nodes_[folder].device = static_cast<std::uint32_t>(device - devices_.begin());
  nodes_[folder].inode = identity.inode;
}

}  // namespace brindle
