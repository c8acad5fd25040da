#include "list/file_list.h"

#include <algorithm>
#include <utility>

#include "platform/file_name.h"
#include "text/hash.h"

namespace brindle {

// A million rows are a million of these.
static_assert(sizeof(ItemRecord) == 48);

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
  if (rest_status_ != ItemStatus::none) named_end_ = items_.size();
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
  RowSet removed;
  std::size_t kept = 0;
  for (std::size_t row = 0; row < items_.size(); ++row) {
    const ItemRecord& record = items_[row];
    if (!leaves(record)) {
      items_[kept++] = record;
      continue;
    }
    removed.insert(row);
    removed_.push_back({record.folder, record.name()});
    if (record.carries_new_name) --renameable_count_;
  }
  if (removed.empty()) return;
  remove_chosen(removed);
  items_.resize(kept);
  named_end_ = std::min(named_end_, kept);
  ++order_version_;
}

void FileList::remove_chosen(const RowSet& removed) {
  chosen_.rows.remove(removed, items_.size());
  if (!chosen_.current) return;
  const std::size_t current = *chosen_.current;
  if (removed.contains(current)) return chosen_.current.reset();
  chosen_.current = current - removed.count_before(current);
}

void FileList::remove_rows(const RowSet& rows) {
  std::size_t row = 0;
  remove_if([&](const ItemRecord&) { return rows.contains(row++); });
}

FileList FileList::release() {
  FileList held = std::move(*this);
  *this = FileList();
  order_version_ = held.order_version_ + 1;
  return held;
}

void FileList::resetFilesDic() {
  filesDic_ = {};
  set_made_ = false;
  removed_.clear();
  folder_has_items_.assign(folders_.size(), false);
  for (const ItemRecord& record : items_) folder_has_items_[record.folder] = true;
}

// Reading and writing

void FileList::read_without_new_name(std::size_t row, FileSystemItem& item) const {
  const ItemRecord& record = items_[row];
  item.set_path(folders_, record.folder, record.name());
  item.set_type(record.type());
}

void FileList::read(std::size_t row, FileSystemItem& item) const {
  read_without_new_name(row, item);
  const ItemRecord& record = items_[row];
  if (record.status != ItemStatus::none) item.setNewFilename(new_filename(row));
  if (record.reason != 0) item.set_reason(decode_file_name(reasons_[record.reason]));
}

void FileList::write(std::size_t row, const FileSystemItem& item, std::size_t name_limit) {
  ItemRecord& record = items_[row];
  // Its name before may have been freed.
  record.proposed_size = 0;
  change_status(row, item.status());
  record.reason = item.reason().empty() ? std::uint16_t{0} : intern_reason(to_utf8(item.reason()));
  if (record.status != ItemStatus::proposed) return;
  thread_local std::u16string name;
  thread_local std::string bytes;
  name = item.newFilename();
  std::replace(name.begin(), name.end(), u'/', u':');
  name_limit = std::min<std::size_t>(name_limit, UINT16_MAX);
  const NameFault fault = encode_file_name(name, bytes, name_limit);
  if (fault == NameFault::none) return promise(row, bytes);
  refuse_unwritable(row, fault, fault == NameFault::too_long ? bytes : to_utf8(name), name_limit);
}

void FileList::promise(std::size_t row, std::string_view name) {
  ItemRecord& record = items_[row];
  change_status(row, ItemStatus::proposed);
  const std::string_view kept = proposed_names_.keep(name);
  record.proposed_data = kept.data();
  record.proposed_size = static_cast<std::uint16_t>(kept.size());
  set_carries(record, record.proposed() != record.name());
}

// What was wanted is kept to be shown, as far as it can be.
void FileList::refuse_unwritable(std::size_t row, NameFault fault, std::string_view name, std::size_t name_limit) {
  ItemRecord& record = items_[row];
  const std::string_view kept = proposed_names_.keep(name.substr(0, UINT16_MAX));
  record.proposed_data = kept.data();
  record.proposed_size = static_cast<std::uint16_t>(kept.size());
  change_status(row, ItemStatus::no_changes);
  record.reason = intern_reason(describe(fault));
  set_problem(row, Problem::unwritable);
  if (fault == NameFault::too_long)
    record.bytes_over = static_cast<std::uint16_t>(std::min<std::size_t>(name.size() - name_limit, UINT16_MAX));
}

// Every change of a status, and so of a name or a reason, comes through here.
void FileList::change_status(std::size_t row, ItemStatus status) {
  ItemRecord& record = items_[row];
  set_carries(record, status == ItemStatus::proposed && record.proposed() != record.name());
  record.status = status;
  record.problem = Problem::none;
  record.holder = Holder::unlisted;
  record.bytes_over = 0;
  clear_warning(row);
  named_end_ = std::max(named_end_, row + 1);
}

void FileList::set_carries(ItemRecord& record, bool carries) {
  if (record.carries_new_name) --renameable_count_;
  if (carries) ++renameable_count_;
  record.carries_new_name = carries;
}

void FileList::set_problem(std::size_t row, Problem problem, const char* other) {
  clear_warning(row);
  items_[row].problem = problem;
  items_[row].other = other;
  set_carries(items_[row], false);
}

void FileList::set_warning(std::size_t row, Warning warning, const char* other) {
  ItemRecord& record = items_[row];
  if (record.problem != Problem::none || (record.warning != Warning::none && record.warning <= warning)) return;
  record.warning = warning;
  record.other = other;
  named_end_ = std::max(named_end_, row + 1);
}

void FileList::clear_warning(std::size_t row) {
  items_[row].warning = Warning::none;
  items_[row].other = nullptr;
}

void FileList::set_status(std::size_t row, ItemStatus status) {
  change_status(row, status);
}

void FileList::set_reason(std::size_t row, std::string_view reason) {
  items_[row].reason = intern_reason(reason);
  named_end_ = std::max(named_end_, row + 1);
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

std::string_view FileList::wanted(std::size_t row) const {
  const ItemRecord& record = items_[row];
  const bool is_taken =
      record.status == ItemStatus::file_already_exists || record.status == ItemStatus::folder_already_exists;
  return is_taken || record.has_failed() ? record.proposed() : std::string_view();
}

void FileList::begin_new_names() {
  old_proposed_names_.absorb(std::move(proposed_names_));
  proposed_names_.clear();
}

void FileList::keep_new_name(std::size_t row) {
  ItemRecord& record = items_[row];
  if (record.proposed_data != nullptr) record.proposed_data = proposed_names_.keep(record.proposed()).data();
}

void FileList::end_new_names(bool complete) {
  if (complete) old_proposed_names_.clear();
}

void FileList::reset_new_names(ItemStatus status) {
  proposed_names_.clear();
  old_proposed_names_.clear();
  for (ItemRecord& record : std::span(items_).first(rows_to_reset(status))) {
    record = ItemRecord{.name_data = record.name_data,
                        .inode = record.inode,
                        .folder = record.folder,
                        .name_size = record.name_size,
                        .status = status,
                        .kind = record.kind};
  }
  named_end_ = 0;
  rest_status_ = status;
  renameable_count_ = 0;
}

void FileList::set_renamed(std::size_t row) {
  ItemRecord& record = items_[row];
  const std::string_view kept = names_.keep(record.proposed());
  record.name_data = kept.data();
  record.name_size = static_cast<std::uint16_t>(kept.size());
  change_status(row, ItemStatus::renaming_ok);
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
void FileList::reorder(std::vector<std::uint32_t> order, std::size_t first) {
  if (!reorder_chosen(order, first)) return;
  const std::span<ItemRecord> items = std::span(items_).subspan(first);
  for (std::uint32_t start = 0; start < order.size(); ++start) {
    if (order[start] == start) continue;
    const ItemRecord moved = items[start];
    std::uint32_t row = start;
    while (order[row] != start) {
      items[row] = items[order[row]];
      row = std::exchange(order[row], row);
    }
    items[row] = moved;
    order[row] = row;
  }
}

// What the list keeps about its rows goes with them. False when the order is the one there is.
bool FileList::reorder_chosen(std::span<const std::uint32_t> order, std::size_t first) {
  bool changes = false;
  const std::optional<std::size_t> old_current = chosen_.current;
  for (std::size_t i = 0; i < order.size(); ++i) {
    changes = changes || order[i] != i;
    if (old_current == first + order[i]) chosen_.current = first + i;
  }
  if (!changes) return false;
  chosen_.rows.reorder(first, order);
  if (named_end_ > first) named_end_ = std::max(named_end_, first + order.size());
  ++order_version_;
  return true;
}

}  // namespace brindle
