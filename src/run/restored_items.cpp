#include "run/restored_items.h"

#include <utility>

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
  const bool is_next = displaced_.parent == from && displaced_.name == from_name;
  const Displaced before = is_next ? std::move(displaced_) : Displaced();
  displaced_ = Displaced();
  displaced_.parent = to;
  displaced_.name = to_name;
  move_row({from, from_name}, {to, to_name}, before);
  move_folder({from, from_name}, {to, to_name}, before);
}

void RestoredItems::move_folder(Key from, Key to, const Displaced& before) {
  const FolderTable& folders = files_.folders();
  const FolderId folder = before.folder_came ? before.folder : folders.find_child(from.folder, from.name);
  if (folder == FolderTable::none) return;
  displaced_.folder = folders.find_child(to.folder, to.name);
  displaced_.folder_came = true;
  follower_.move(folder, to.folder, to.name);
}

void RestoredItems::move_row(Key from, Key to, const Displaced& before) {
  if (rows_.empty()) index();
  std::optional<std::uint32_t> row = before.row;
  if (!before.row_came) {
    const auto found = rows_.find(from);
    if (found != rows_.end()) row = found->second;
    if (found != rows_.end()) rows_.erase(found);
  }
  if (!row) return;
  files_.set_path(*row, to.folder, to.name);
  files_.set_status(*row, ItemStatus::none);
  files_.set_reason(*row, {});
  displaced_.row_came = true;
  const auto [place, is_free] = rows_.try_emplace(Key{to.folder, files_[*row].name()}, *row);
  if (!is_free) displaced_.row = std::exchange(place->second, *row);
}

}  // namespace brindle
