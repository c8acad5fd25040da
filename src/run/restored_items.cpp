#include "run/restored_items.h"

#include "text/hash.h"

namespace brindle {

std::size_t RestoredItems::KeyHash::operator()(const Key& key) const {
  return hash_bytes(key.name, key.folder);
}

RestoredItems::RestoredItems(FileList& files) : files_(files), follower_(files) {}

RestoredItems::~RestoredItems() {
  files_.resetFilesDic();
}

void RestoredItems::index() {
  rows_.reserve(files_.size());
  for (std::uint32_t row = 0; row < files_.size(); ++row) {
    rows_.emplace(Key{files_[row].folder, files_[row].name()}, row);
  }
}

FolderId RestoredItems::find_folder(std::string_view path) const {
  FolderId folder = FolderTable::root;
  while (!path.empty() && folder != FolderTable::none) {
    const std::size_t slash = path.find('/');
    const std::string_view name = path.substr(0, slash);
    if (!name.empty()) folder = files_.folders().find_child(folder, name);
    path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
  }
  return folder;
}

void RestoredItems::moved(std::string_view from_folder, std::string_view from_name, std::string_view to_folder,
                          std::string_view to_name) {
  if (files_.empty()) return;
  const FolderId from = find_folder(from_folder);
  if (from == FolderTable::none) return;
  const FolderId to = to_folder == from_folder ? from : files_.folders().intern(to_folder);
  move_row({from, from_name}, to, to_name);
  const FolderId folder = files_.folders().find_child(from, from_name);
  if (folder != FolderTable::none) follower_.move(folder, to, to_name);
}

void RestoredItems::move_row(Key from, FolderId to_folder, std::string_view to_name) {
  if (rows_.empty()) index();
  const auto found = rows_.find(from);
  if (found == rows_.end()) return;
  const std::uint32_t row = found->second;
  rows_.erase(found);
  files_.set_path(row, to_folder, to_name);
  files_.set_status(row, ItemStatus::none);
  files_.set_reason(row, {});
  rows_.insert_or_assign(Key{to_folder, files_[row].name()}, row);
}

}  // namespace brindle
