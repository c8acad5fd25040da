#pragma once

// Keeps the list true while an undo moves items back.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "list/file_list.h"
#include "list/path_follower.h"

namespace brindle {

/// The list must not be sorted, added to or removed from while this lives. One thread.
class RestoredItems {
 public:
  explicit RestoredItems(FileList& files);
  RestoredItems(const RestoredItems&) = delete;
  RestoredItems& operator=(const RestoredItems&) = delete;
  /// Brings the duplicate set up to date.
  ~RestoredItems();

  /// An entry of a folder has become one of another, or got another name there (absolute paths, bytes). Its row, when
  /// it is listed, follows and has no new name any more; so do the paths of what lies below it.
  void moved(std::string_view from_folder, std::string_view from_name, std::string_view to_folder,
             std::string_view to_name);

 private:
  struct Key {
    FolderId folder;
    std::string_view name;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };

  // Items that pass their names round are told of one after the other: who had a name when another one came to it is
  // the next to move, listed or not.
  struct Displaced {
    FolderId parent = FolderTable::none;
    std::string name;
    bool row_came = false;
    bool folder_came = false;
    std::optional<std::uint32_t> row;
    FolderId folder = FolderTable::none;
  };

  void index();
  FolderId find_folder(std::string_view path) const;
  void move_row(Key from, Key to, const Displaced& before);
  void move_folder(Key from, Key to, const Displaced& before);

  FileList& files_;
  PathFollower follower_;
  std::unordered_map<Key, std::uint32_t, KeyHash> rows_;  // made when the first item moves

  Displaced displaced_;
};

}  // namespace brindle
