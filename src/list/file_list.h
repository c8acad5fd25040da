#pragma once

// The file list: its items in their current order, packed for lists of a million, and the duplicate set of their paths.
//
// A row is an index into the current order; sorting and removing change which item a row names. One thread at a time.

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "list/file_system_item.h"
#include "list/folder_table.h"
#include "list/item_remark.h"
#include "list/row_set.h"
#include "platform/file_name.h"
#include "text/text_arena.h"

namespace brindle {

/// One item as the list keeps it. Names are on-disk bytes with a NUL behind their end.
struct ItemRecord {
  const char* name_data = nullptr;
  const char* proposed_data = nullptr;  ///< null unless `proposed`, renamed, or the item could not get it
  /// The name of the item that a clash, or the warnings "contested" and "alike", are with; it lies in the same folder.
  /// Null otherwise.
  const char* other = nullptr;
  std::uint64_t inode = 0;  ///< as the listing gave it; 0 when not known
  FolderId folder = FolderTable::root;
  std::uint16_t name_size = 0;
  std::uint16_t proposed_size = 0;
  std::uint16_t reason = 0;  ///< index into the list's reasons; 0: none
  ItemStatus status = ItemStatus::none;
  std::uint8_t kind = 0;         ///< bits: folder 1, alias 2
  std::uint16_t bytes_over = 0;  ///< of a name that is too long for its disk
  Problem problem : 4 = Problem::none;
  Warning warning : 4 = Warning::none;
  Holder holder : 2 = Holder::unlisted;  ///< of a name that is taken
  bool carries_new_name : 1 = false;     ///< it is promised a name, other than its own

  std::string_view name() const { return {name_data, name_size}; }
  std::string_view proposed() const { return {proposed_data, proposed_size}; }
  bool is_folder() const { return (kind & 1U) != 0; }
  /// No name could be made for it, or it could not be renamed; the list has the reason.
  bool has_failed() const { return status == ItemStatus::no_changes && reason != 0; }
  /// A link to a folder is a folder, though never entered.
  ItemType type() const { return kind == 0 ? ItemType::file : is_folder() ? ItemType::folder : ItemType::alias; }
};

constexpr std::uint8_t kind_bits(bool is_folder, bool is_alias) {
  return static_cast<std::uint8_t>((is_folder ? 1U : 0U) | (is_alias ? 2U : 0U));
}

/// Rows that somebody has chosen, and the one they are at.
struct ChosenRows {
  RowSet rows;
  std::optional<std::size_t> current;
};

class FileList {
 public:
  std::size_t size() const { return items_.size(); }
  bool empty() const { return items_.empty(); }
  const ItemRecord& operator[](std::size_t row) const { return items_[row]; }
  std::span<const ItemRecord> items() const { return items_; }
  FolderTable& folders() { return folders_; }
  const FolderTable& folders() const { return folders_; }

  // Adding. The duplicate set holds every path ever accepted since it was last reset, also of items removed since.

  /// Appends an item unless its path is in the duplicate set; false when it is.
  bool add(FolderId folder, std::string_view name, std::uint8_t kind, std::uint64_t inode);
  /// The same for the entries of one folder listing, which holds no name twice: while the folder had no items before,
  /// an entry costs no look-up. Several listings may be open at once.
  struct Listing {
    FolderId folder = FolderTable::root;
    bool is_new = false;
  };
  Listing begin_listing(FolderId folder);
  bool add_listed(const Listing& listing, std::string_view name, std::uint8_t kind, std::uint64_t inode);

  // Removing. The duplicate set is kept as it is until resetFilesDic.

  void remove_if(const std::function<bool(const ItemRecord&)>& leaves);
  void remove_rows(const RowSet& rows);
  void clear() { release(); }
  /// Empties the list and hands over what it held: freeing a million items takes a while, on whatever thread.
  FileList release();
  /// Rebuilds the duplicate set from the items.
  void resetFilesDic();

  // Reading and writing.

  /// Makes `item` stand for a row. Reading the rows of one folder one after the other is cheapest.
  void read(std::size_t row, FileSystemItem& item) const;
  /// The same with an empty new-name field.
  void read_without_new_name(std::size_t row, FileSystemItem& item) const;
  /// Stores the item's new name and reason. A new name that cannot be written to disk (see encode_file_name) is kept
  /// out: the row gets "No Changes" and why. `name_limit` is the longest name the folder takes, in bytes.
  void write(std::size_t row, const FileSystemItem& item, std::size_t name_limit);
  void set_status(std::size_t row, ItemStatus status);
  void set_reason(std::size_t row, std::string_view reason);
  /// The row keeps its name. `other` is a name of this list, NUL-terminated. A change of the status takes it back.
  void set_problem(std::size_t row, Problem problem, const char* other = nullptr);
  void set_holder(std::size_t row, Holder holder) { items_[row].holder = holder; }
  /// Kept unless the row has a more urgent one.
  void set_warning(std::size_t row, Warning warning, const char* other = nullptr);
  void clear_warning(std::size_t row);
  /// The row was to get a name that cannot be written: it keeps its own, and `name` to be shown. `name_limit` in bytes.
  void refuse_unwritable(std::size_t row, NameFault fault, std::string_view name, std::size_t name_limit);
  /// The row is not renamed, whatever it was promised; what it was to get stays to be seen.
  void withhold(std::size_t row) { set_carries(items_[row], false); }
  /// The row is to get this name (on-disk bytes, which can be written) after all.
  void promise(std::size_t row, std::string_view name);
  std::string_view reason(std::size_t row) const { return reasons_[items_[row].reason]; }
  /// The row's new-name field as text: status text or proposed name, on-disk form.
  std::u16string new_filename(std::size_t row) const;
  /// The name (bytes) that a row was to get, where a status says in its place why it did not; else empty.
  std::string_view wanted(std::size_t row) const;

  /// A preview writes its new names between these two calls. Afterwards the names of the preview before are freed,
  /// unless it was broken off: rows it did not reach still hold theirs.
  void begin_new_names();
  /// The row's new name outlasts the preview that is being made.
  void keep_new_name(std::size_t row);
  void end_new_names(bool complete);
  /// Forgets all new names and gives every row this status.
  void reset_new_names(ItemStatus status);
  /// How many rows that would write to: those beyond stand so already.
  std::size_t rows_to_reset(ItemStatus status) const { return status == rest_status_ ? named_end_ : items_.size(); }
  /// Rows that are promised a name.
  std::size_t renameable_count() const { return renameable_count_; }

  /// After a rename: the proposed name becomes the name, and the row is "Renaming (OK)".
  void set_renamed(std::size_t row);
  /// Puts a row under another path (its folder was renamed).
  void set_path(std::size_t row, FolderId folder, std::string_view name);

  std::string path(std::size_t row) const;  ///< bytes
  std::string folder_path(std::size_t row) const { return folders_.path(items_[row].folder); }

  // Order.

  /// Puts the rows from `first` on into the given order: row first + i is what row first + order[i] was.
  void reorder(std::vector<std::uint32_t> order, std::size_t first = 0);
  /// Another number after each change of which item a row names; appending changes none.
  std::uint64_t order_version() const { return order_version_; }
  /// These rows stay with their items from now on, however the list is ordered; items removed are left out.
  void choose(ChosenRows rows) { chosen_ = std::move(rows); }
  const ChosenRows& chosen() const { return chosen_; }

 private:
  struct PathKey {
    FolderId folder;
    std::string_view name;
    bool operator==(const PathKey&) const = default;
  };
  struct PathHash {
    std::size_t operator()(const PathKey& key) const;
  };

  void append(FolderId folder, std::string_view name, std::uint8_t kind, std::uint64_t inode);
  void make_set();
  bool is_new_folder(FolderId folder);
  std::uint16_t intern_reason(std::string_view reason);
  void change_status(std::size_t row, ItemStatus status);
  void set_carries(ItemRecord& record, bool carries);
  void remove_chosen(const RowSet& removed);
  bool reorder_chosen(std::span<const std::uint32_t> order, std::size_t first);

  FolderTable folders_;
  std::vector<ItemRecord> items_;
  TextArena names_;
  TextArena proposed_names_;
  TextArena old_proposed_names_;
  std::vector<std::string> reasons_ = {""};
  std::unordered_map<std::string, std::uint16_t> reason_ids_;

  // Rows from named_end_ on have this status, and neither new name nor reason.
  std::size_t named_end_ = 0;
  ItemStatus rest_status_ = ItemStatus::none;
  std::size_t renameable_count_ = 0;
  ChosenRows chosen_;
  std::uint64_t order_version_ = 0;

  // filesDic. While no folder has been listed twice, the items themselves are the set; the hash set is made when a path
  // arrives that could be there already.
  std::unordered_set<PathKey, PathHash> filesDic_;
  bool set_made_ = false;
  std::vector<PathKey> removed_;        // accepted once, no longer listed
  std::vector<bool> folder_has_items_;  // by folder
};

}  // namespace brindle
