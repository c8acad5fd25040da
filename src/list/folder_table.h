#pragma once

// The folders that hold listed items, as a tree: each folder is a name below another folder. A path costs its own name
// once, however many items lie in it, and giving a folder another name moves everything below it at once.
//
// One thread at a time; const calls may run on several.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/folder_handle.h"
#include "text/text_arena.h"

namespace brindle {

using FolderId = std::uint32_t;

/// A name of an entry and the one that it gets.
struct NameChange {
  std::string_view old_name;
  std::string_view new_name;
};

class FolderTable {
 public:
  static constexpr FolderId root = 0;
  static constexpr FolderId none = UINT32_MAX;

  FolderTable();

  /// The folder of an absolute path (bytes). Repeated and trailing "/" do not count.
  FolderId intern(std::string_view path);
  /// The folder of this name in `parent`, made when it is not there.
  FolderId child(FolderId parent, std::string_view name);
  /// The same, or `none`.
  FolderId find_child(FolderId parent, std::string_view name) const;

  std::size_t size() const { return nodes_.size(); }
  FolderId parent(FolderId folder) const { return nodes_[folder].parent; }
  std::string_view name(FolderId folder) const { return nodes_[folder].name(); }  ///< NUL-terminated

  /// The absolute path; no trailing "/" but for the root itself.
  std::string path(FolderId folder) const;
  void append_path(FolderId folder, std::string& path) const;

  /// Gives a folder another name, or another parent: it keeps its number, and what is below it goes with it. Another
  /// folder that was known by the new path is known by it no more: on disk it cannot be there.
  void move(FolderId folder, FolderId new_parent, std::string_view new_name);

  /// Gives folders of one parent new names at once, so that they may take over each other's. Those not known are passed
  /// over.
  void rename_children(FolderId parent, std::span<const NameChange> changes);

  /// Which folder on disk it was when it was listed; none before that.
  std::optional<FolderIdentity> identity(FolderId folder) const;
  void set_identity(FolderId folder, const FolderIdentity& identity);

 private:
  // A list of a million folders is a million of these. Disks are few, so a number stands for each; 0 is none.
  struct Node {
    const char* name_data = nullptr;
    std::uint64_t inode = 0;
    FolderId parent = none;
    std::uint32_t name_size = 0;
    std::uint32_t device = 0;

    std::string_view name() const { return {name_data, name_size}; }
  };
  static_assert(sizeof(Node) == 32);
  struct Key {
    FolderId parent;
    std::string_view name;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };

  static Node node(FolderId parent, std::string_view name);

  TextArena names_;
  std::vector<Node> nodes_;
  std::vector<std::uint64_t> devices_ = {0};
  std::unordered_map<Key, FolderId, KeyHash> children_;
};

}  // namespace brindle
