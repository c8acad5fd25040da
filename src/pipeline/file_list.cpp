#include "pipeline/file_list.h"

#include <algorithm>
#include <utility>

#include "platform/file_name.h"
#include "platform/hash.h"

namespace brindle {

std::size_t FileList::PathHash::operator()(const PathKey& key) const {
  return hash_bytes(key.name, key.folder);
}

// Adding

bool FileList::is_new_folder(FolderId folder) {
  if (folder >= folder_has_items_.size()) folder_has_items_.resize(std::max<std::size_t>(folder + 1, folders_.size()));
  const bool is_new = !folder_has_items_[folder];
  folder_has_items_[folder] = true;
  return is_new;
}

void FileList::append(FolderId folder, std::string_view name, std::uint8_t kind, std::uint64_t inode) {
  ItemRecord& record = items_.emplace_back();
  const std::string_view kept = names_.keep(name);
  record.name_data = kept.data();
  record.name_size = static_cast<std::uint16_t>(kept.size());
  record.folder = folder;
  record.kind = kind;
  record.inode = inode;
}

void FileList::make_set() {
  if (set_made_) return;
  set_made_ = true;
  filesDic_.reserve(items_.size());
  for (const ItemRecord& record : items_) filesDic_.insert({record.folder, record.name()});
  filesDic_.insert(removed_.begin(), removed_.end());
}

bool FileList::add(FolderId folder, std::string_view name, std::uint8_t kind, std::uint64_t inode) {
  const bool is_new = is_new_folder(folder);
  if (!is_new) make_set();
  if (set_made_ && filesDic_.contains({folder, name})) return false;
  append(folder, name, kind, inode);
  if (set_made_) filesDic_.insert({folder, items_.back().name()});
  return true;
}

FileList::Listing FileList::begin_listing(FolderId folder) {
  return {folder, is_new_folder(folder) && !set_made_};
}

bool FileList::add_listed(const Listing& listing, std::string_view name, std::uint8_t kind, std::uint64_t inode) {
  // The set may have been made while the listing was open; then it must learn the name.
  if (!listing.is_new || set_made_) return add(listing.folder, name, kind, inode);
  append(listing.folder, name, kind, inode);
  return true;
}

// Removing

void FileList::remove_if(const std::function<bool(const ItemRecord&)>& leaves) {
  const auto first_left = std::stable_partition(items_.begin(), items_.end(),
                                                [&leaves](const ItemRecord& record) { return !leaves(record); });
  for (auto left = first_left; left != items_.end(); ++left) removed_.push_back({left->folder, left->name()});
  items_.erase(first_left, items_.end());
}

void FileList::remove_rows(std::span<const std::size_t> sorted_rows) {
  auto next = sorted_rows.begin();
  std::size_t row = 0;
  remove_if([&](const ItemRecord&) {
    const bool leaves = next != sorted_rows.end() && *next == row;
    if (leaves) ++next;
    ++row;
    return leaves;
  });
}

void FileList::clear() {
  *this = FileList();
}

void FileList::resetFilesDic() {
  filesDic_ = {};
  set_made_ = false;
  removed_.clear();
  folder_has_items_.assign(folders_.size(), false);
  for (ItemRecord& record : items_) {
    record.folder = folders_.resolve(record.folder);
    folder_has_items_[record.folder] = true;
  }
}

// Reading and writing

void FileList::read_without_new_name(std::size_t row, FileSystemItem& item) const {
  const ItemRecord& record = items_[row];
  if (item.list_folder() == record.folder && item.list() == this) {
    item.set_name(record.name());
  } else {
    item.set_path(folders_.path(record.folder), record.name());
    item.set_list(this, record.folder);
  }
  item.set_kind((record.kind & 1U) != 0, (record.kind & 2U) != 0, (record.kind & 4U) != 0);
}

void FileList::read(std::size_t row, FileSystemItem& item) const {
  read_without_new_name(row, item);
  const ItemRecord& record = items_[row];
  if (record.status != ItemStatus::none) item.setNewFilename(new_filename(row));
  if (record.reason != 0) item.set_reason(decode_file_name(reasons_[record.reason]));
}

void FileList::write(std::size_t row, const FileSystemItem& item, std::size_t name_limit) {
  ItemRecord& record = items_[row];
  record.reason = item.reason().empty() ? std::uint16_t{0} : intern_reason(to_utf8(item.reason()));
  record.status = item.status();
  if (record.status != ItemStatus::proposed) return;
  thread_local std::u16string name;
  thread_local std::string bytes;
  name = item.newFilename();
  std::replace(name.begin(), name.end(), u'/', u':');
  const NameFault fault = encode_file_name(name, bytes, std::min<std::size_t>(name_limit, UINT16_MAX));
  if (fault != NameFault::none) {
    record.status = ItemStatus::no_changes;
    record.reason = intern_reason(describe(fault));
    return;
  }
  const std::string_view kept = proposed_names_.keep(bytes);
  record.proposed_data = kept.data();
  record.proposed_size = static_cast<std::uint16_t>(kept.size());
}

void FileList::set_status(std::size_t row, ItemStatus status) {
  items_[row].status = status;
}

void FileList::set_reason(std::size_t row, std::string_view reason) {
  items_[row].reason = intern_reason(reason);
}

std::uint16_t FileList::intern_reason(std::string_view reason) {
  if (reason.empty()) return 0;
  const auto found = reason_ids_.find(std::string(reason));
  if (found != reason_ids_.end()) return found->second;
  // Reasons are a handful of sentences; whatever comes beyond the numbers' range shares the last.
  if (reasons_.size() == UINT16_MAX) return UINT16_MAX - 1;
  const auto id = static_cast<std::uint16_t>(reasons_.size());
  reasons_.emplace_back(reason);
  reason_ids_.emplace(reason, id);
  return id;
}

std::u16string FileList::new_filename(std::size_t row) const {
  const ItemRecord& record = items_[row];
  if (record.status == ItemStatus::proposed) return decode_file_name(record.proposed());
  return std::u16string(status_text(record.status));
}

void FileList::begin_new_names() {
  old_proposed_names_.absorb(std::move(proposed_names_));
  proposed_names_.clear();
}

void FileList::end_new_names(bool complete) {
  if (complete) old_proposed_names_.clear();
}

void FileList::reset_new_names(ItemStatus status) {
  proposed_names_.clear();
  old_proposed_names_.clear();
  for (ItemRecord& record : items_) {
    record.status = status;
    record.reason = 0;
    record.proposed_data = nullptr;
    record.proposed_size = 0;
  }
}

void FileList::set_renamed(std::size_t row) {
  ItemRecord& record = items_[row];
  const std::string_view kept = names_.keep(record.proposed());
  record.name_data = kept.data();
  record.name_size = static_cast<std::uint16_t>(kept.size());
  record.status = ItemStatus::renaming_ok;
  record.reason = 0;
}

void FileList::set_path(std::size_t row, FolderId folder, std::string_view name) {
  ItemRecord& record = items_[row];
  record.folder = folder;
  if (name == record.name()) return;
  const std::string_view kept = names_.keep(name);
  record.name_data = kept.data();
  record.name_size = static_cast<std::uint16_t>(kept.size());
}

std::string FileList::path(std::size_t row) const {
  std::string path = folder_path(row);
  if (path.back() != '/') path.push_back('/');
  return path.append(items_[row].name());
}

// In place, one cycle of the permutation after the other: a list of a million has no room for a second copy of itself.
void FileList::reorder(std::vector<std::uint32_t> order) {
  for (std::uint32_t start = 0; start < order.size(); ++start) {
    if (order[start] == start) continue;
    const ItemRecord first = items_[start];
    std::uint32_t row = start;
    while (order[row] != start) {
      items_[row] = items_[order[row]];
      row = std::exchange(order[row], row);
    }
    items_[row] = first;
    order[row] = row;
  }
}

std::size_t FileList::memory() const {
  return items_.capacity() * sizeof(ItemRecord) + names_.bytes() + proposed_names_.bytes();
}

}  // namespace brindle
