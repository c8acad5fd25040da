#pragma once

// The folders that hold listed items, as a tree: each folder is a name below another folder. A path costs its own name
// once, however many items lie in it, and giving a folder another name moves everything below it at once.
//
// One thread at a time; const calls may run on several.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/text_arena.h"

namespace brindle {

using FolderId = std::uint32_t;

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
  std::string_view name(FolderId folder) const { return nodes_[folder].name; }

  /// The absolute path; no trailing "/" but for the root itself.
  std::string path(FolderId folder) const;
  void append_path(FolderId folder, std::string& path) const;

  // Giving folders other names: detach all of them, then attach each.

  /// Takes a folder out of its parent. It keeps its number, and what is below it.
  void detach(FolderId folder);
  /// Puts a detached folder below `parent`. When a folder of this name is there already, nothing happens and that one
  /// is returned; otherwise `folder` itself.
  FolderId attach(FolderId folder, FolderId parent, std::string_view name);
  /// Makes a detached folder stand for another: its path is the other's from now on.
  void make_alias(FolderId folder, FolderId other) { nodes_[folder].alias = other; }
  /// The folder that a number stands for, made aliases followed.
  FolderId resolve(FolderId folder) const;

 private:
  struct Node {
    FolderId parent = none;
    std::string_view name;
    FolderId alias = none;
  };
  struct Key {
    FolderId parent;
    std::string_view name;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };

  TextArena names_;
  std::vector<Node> nodes_;
  std::unordered_map<Key, FolderId, KeyHash> children_;
};

}  // namespace brindle
