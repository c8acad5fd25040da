#include "run/logged_list.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <span>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "list/folder_table.h"
#include "list/open_folder.h"
#include "methods/rename_plan.h"
#include "platform/ascii.h"
#include "platform/file_kind.h"
#include "platform/translation.h"
#include "run/preview.h"
#include "settings/rename_settings.h"
#include "text/hash.h"

namespace brindle {
namespace {

constexpr std::string_view goes_elsewhere = to_translate("the log takes it to another folder");

// Whether the second entry's item had the name that the first one's got.
bool hands_on(const LogEntry& first, const LogEntry& second) {
  const bool usable = first.fault.empty() && second.fault.empty();
  return usable && first.target_name == second.source_name && first.source_folder == first.target_folder &&
         first.source_folder == second.source_folder && first.source_folder == second.target_folder;
}

/// The items of a log, as nodes of a tree that has been through the run: each knows what it was called before it.
class LoggedItems {
 public:
  struct Place {
    FolderId parent = FolderTable::none;
    std::string_view name;  // NUL-terminated
  };

  explicit LoggedItems(const LogFile& log) {
    // Entries that pass their names round, one behind the other, had them all until then.
    const std::span<const LogEntry> entries = log.entries;
    std::size_t first = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
      const bool is_round = i > first && hands_on(entries[i], entries[first]);
      const bool goes_on = i + 1 < entries.size() && hands_on(entries[i], entries[i + 1]);
      if (goes_on && !is_round) continue;
      add(entries.subspan(first, i + 1 - first), is_round);
      first = i + 1;
    }
    find_heirs();
  }

  const std::vector<FolderId>& items() const { return items_; }
  /// Entries that passed their names round, with their items.
  const std::vector<std::pair<const LogEntry*, FolderId>>& rounds() const { return rounds_; }
  bool is_item(FolderId node) const { return is_item_[node]; }
  std::size_t nodes() const { return before_.size(); }
  std::size_t unusable() const { return unusable_; }
  Place before(FolderId node) const { return before_[node]; }
  Place after(FolderId node) const { return {tree_.parent(node), tree_.name(node)}; }
  /// The item that takes over the place that this one leaves, when the run goes that way; else none.
  FolderId heir(FolderId item, LogDirection direction) const {
    const std::vector<FolderId>& heirs = direction == LogDirection::forth ? heirs_forth_ : heirs_back_;
    return heirs.empty() ? FolderTable::none : heirs[item];
  }

 private:
  void add(std::span<const LogEntry> entries, bool is_round) {
    std::vector<FolderId> nodes;
    for (const LogEntry& entry : entries) {
      if (!can_be_listed(entry)) {
        ++unusable_;
      } else if (is_round) {
        nodes.push_back(find(entry));
        rounds_.emplace_back(&entry, nodes.back());
      } else {
        rename(find(entry), entry);
      }
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) rename(nodes[i], entries[i]);
  }

  static bool can_be_listed(const LogEntry& entry) {
    return entry.fault.empty() && std::max(entry.source_name.size(), entry.target_name.size()) <= UINT16_MAX;
  }

  FolderId find(const LogEntry& entry) {
    if (folder_ == FolderTable::none || entry.source_folder != path_) {
      path_ = entry.source_folder;
      folder_ = tree_.intern(path_);
    }
    const FolderId item = tree_.child(folder_, entry.source_name);
    note_new_nodes();
    if (!is_item_[item]) items_.push_back(item);
    is_item_[item] = true;
    return item;
  }

  void rename(FolderId item, const LogEntry& entry) {
    FolderId parent = tree_.parent(item);
    if (entry.target_folder != entry.source_folder) {
      parent = tree_.intern(entry.target_folder);
      note_new_nodes();
      for (FolderId at = parent; at != FolderTable::root; at = tree_.parent(at)) {
        if (at == item) return;  // no run has moved a folder into itself
      }
    }
    tree_.move(item, parent, entry.target_name);
  }

  void find_heirs() {
    for (const FolderId item : items_) {
      const FolderId heir = tree_.find_child(before_[item].parent, before_[item].name);
      if (heir == FolderTable::none || heir == item || !is_item_[heir]) continue;
      heirs_forth_.resize(before_.size(), FolderTable::none);
      heirs_back_.resize(before_.size(), FolderTable::none);
      heirs_forth_[item] = heir;
      heirs_back_[heir] = item;
    }
  }

  // What is met for the first time has its first name.
  void note_new_nodes() {
    for (auto node = static_cast<FolderId>(before_.size()); node < tree_.size(); ++node)
      before_.push_back({tree_.parent(node), tree_.name(node)});
    is_item_.resize(before_.size());
  }

  FolderTable tree_;
  std::vector<Place> before_;    // by node
  std::vector<bool> is_item_;    // by node
  std::vector<FolderId> items_;  // in the order of the run
  std::vector<std::pair<const LogEntry*, FolderId>> rounds_;
  std::vector<FolderId> heirs_forth_;  // by node; empty where no item takes over a place
  std::vector<FolderId> heirs_back_;
  std::string_view path_;  // of the entry's folder at hand
  FolderId folder_ = FolderTable::none;
  std::size_t unusable_ = 0;
};

/// Makes rows of the items.
class LoggedRows {
 public:
  LoggedRows(const LoggedItems& items, LogDirection direction, bool folders, FileList& files)
      : items_(items),
        direction_(direction),
        missing_kind_(kind_bits(folders, false)),
        files_(files),
        folders_(items.nodes(), FolderTable::none),
        states_(items.nodes()) {}

  /// What nothing on disk would tell.
  void set_through(FolderId item) { states_[item] = State::through; }
  /// The number of items that share a path with another one: a log of no run.
  std::size_t add_all(const JobControl& control) {
    std::size_t refused = 0;
    for (const FolderId item : items_.items()) {
      if (control.cancelled()) break;
      if (!add(item)) ++refused;
    }
    if (direction_ == LogDirection::back) reverse();
    return refused;
  }

 private:
  using Place = LoggedItems::Place;
  enum class State : std::uint8_t { unknown, asked, here, through };

  Place from(FolderId item) const {
    return direction_ == LogDirection::forth ? items_.before(item) : items_.after(item);
  }
  Place to(FolderId item) const { return direction_ == LogDirection::forth ? items_.after(item) : items_.before(item); }
  Place now(FolderId item) const { return states_[item] == State::through ? to(item) : from(item); }
  bool stays_in_folder(FolderId item) const { return from(item).parent == to(item).parent; }

  FolderId folder_of(FolderId node);
  FileKind look(FolderId folder, const Place& place);
  bool is_at(const Place& place, FolderId folder) { return look(folder, place).exists; }
  void settle(FolderId item, FolderId folder);
  bool add(FolderId item);
  void reverse();

  const LoggedItems& items_;
  const LogDirection direction_;
  const std::uint8_t missing_kind_;
  FileList& files_;
  std::vector<FolderId> folders_;  // by node: the list's number
  std::vector<State> states_;      // by node: whether it has the name that it is to get
  std::vector<FolderId> above_;
  std::vector<FolderId> chain_;
  OpenFolder open_;
  const char* looked_at_ = nullptr;  // a name of one node, and so of one folder
  FileKind found_;
};

// The list's number of a node.
FolderId LoggedRows::folder_of(FolderId node) {
  const std::size_t start = above_.size();
  for (; node != FolderTable::root && folders_[node] == FolderTable::none; node = from(node).parent)
    above_.push_back(node);
  FolderId folder = node == FolderTable::root ? FolderTable::root : folders_[node];
  for (; above_.size() > start; above_.pop_back()) {
    const FolderId below = above_.back();
    if (items_.is_item(below)) settle(below, folder);
    folder = files_.folders().child(folder, now(below).name);
    folders_[below] = folder;
  }
  return folder;
}

FileKind LoggedRows::look(FolderId folder, const Place& place) {
  if (open_.folder() != folder) {
    open_.open(files_.folders(), folder);
    FolderIdentity identity;
    if (open_.handle().identity(identity)) files_.folders().set_identity(folder, identity);
  }
  if (looked_at_ != place.name.data())
    found_ = open_.handle() ? file_kind(open_.handle(), place.name.data()) : FileKind{};
  looked_at_ = place.name.data();
  return found_;
}

// An item has come through when it is no more where it was, but where it is to be. What stands at its place may be the
// one that was to take it over, and has: so along the chain. A round of names does not tell, and counts as not begun.
void LoggedRows::settle(FolderId item, FolderId folder) {
  bool is_through = false;
  for (FolderId at = item; at != FolderTable::none; at = items_.heir(at, direction_)) {
    is_through = states_[at] == State::through;
    if (states_[at] != State::unknown) break;
    states_[at] = State::asked;
    chain_.push_back(at);
    is_through = stays_in_folder(at) && !is_at(from(at), folder);
    if (is_through || !stays_in_folder(at)) break;
  }
  for (; !chain_.empty(); chain_.pop_back()) {
    is_through = is_through && is_at(to(chain_.back()), folder);
    states_[chain_.back()] = is_through ? State::through : State::here;
  }
}

bool LoggedRows::add(FolderId item) {
  const FolderId folder = folder_of(from(item).parent);
  settle(item, folder);
  const FileKind kind = look(folder, now(item));
  const std::uint8_t bits = kind.exists ? kind_bits(kind.is_folder, kind.is_alias) : missing_kind_;
  if (!files_.add(folder, now(item).name, bits, kind.inode)) return false;
  const std::size_t row = files_.size() - 1;
  if (stays_in_folder(item) && states_[item] == State::here) {
    files_.promise(row, to(item).name);
  } else {
    files_.set_status(row, ItemStatus::no_changes);
    if (!stays_in_folder(item)) files_.set_reason(row, goes_elsewhere);
  }
  return true;
}

void LoggedRows::reverse() {
  std::vector<std::uint32_t> order(files_.size());
  std::iota(order.rbegin(), order.rend(), 0U);
  files_.reorder(std::move(order));
}

std::size_t hash_of(const LogEntry& entry) {
  return hash_bytes(entry.target_name, hash_bytes(entry.source_name, hash_bytes(entry.source_folder)));
}

// Looks for the renamings of rounds among those of later logs.
void find_rounds_done(const LoggedItems& items, const std::vector<std::string>& since, LoggedRows& rows) {
  if (items.rounds().empty()) return;
  std::unordered_set<std::size_t> done;
  for (const std::string& path : since) {
    const Result<LogFile> log = readLogFile(path);
    if (!log.ok()) continue;
    for (const LogEntry& entry : log->entries) done.insert(hash_of(entry));
  }
  for (const auto& [entry, item] : items.rounds()) {
    if (done.contains(hash_of(*entry))) rows.set_through(item);
  }
}

// Names that items have had are nothing to look at twice; other names beside them are.
void clear_idle_warnings(FileList& files) {
  for (std::size_t row = 0; row < files.size(); ++row) {
    const Warning warning = files[row].warning;
    if (warning == Warning::extension || warning == Warning::hidden) files.clear_warning(row);
  }
}

}  // namespace

bool is_log_of_folders(const LogFile& log) {
  return equal_ignoring_case(log.type, "FOLDERS");
}

LoggedPreview preview_log(const LogFile& log, LogDirection direction, FileList& files, DiskNames& disk_names,
                          const JobControl& control, const std::vector<std::string>& since) {
  const LoggedItems items(log);
  LoggedRows rows(items, direction, is_log_of_folders(log), files);
  if (direction == LogDirection::forth) find_rounds_done(items, since, rows);
  LoggedPreview result{items.unusable() + rows.add_all(control), false};
  RenameSettings settings;
  settings.selectedTab = tab_of(Method::from_list);
  RenamePlan plan(settings, Date{});
  result.cancelled = preview(files, plan, disk_names, control, {.permute = true}).cancelled;
  clear_idle_warnings(files);
  return result;
}

ApplyOptions redo_options(bool folders, std::string log_folder) {
  ApplyOptions options;
  options.isFolders = folders;
  options.permute = true;
  options.log_folder = std::move(log_folder);
  return options;
}

bool is_all_redone(const FileList& files) {
  return std::ranges::all_of(files.items(), [](const ItemRecord& record) {
    const bool needs_none = record.status == ItemStatus::no_changes && record.reason == 0;
    return record.status == ItemStatus::renaming_ok || (needs_none && record.problem == Problem::none);
  });
}

}  // namespace brindle
