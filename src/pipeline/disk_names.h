#pragma once

// Existence tests by the thousand: the names in a folder as a set of hashes, listed once and kept as long as the folder
// stays as it was. Where a hash cannot answer alone (a disk that ignores case, a name that is found), the disk is asked.
//
// One thread at a time.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "pipeline/folder_table.h"
#include "platform/folder_handle.h"

namespace brindle {

class DiskNames {
 public:
  // Filling during a walk, one folder at a time: begin, the hash of every name in the folder, end. A listing that was broken
  // off is dropped by the next begin.
  void begin_listing(FolderId folder, const FolderHandle& handle);
  void add_listed(std::string_view name);
  void end_listing();

  /// Turns to a folder; the tests below are about it. `expected_tests` tells how many will come, about: few are answered one
  /// by one. A kept listing is used when the folder has not changed since.
  void enter(const FolderTable& folders, FolderId folder, std::size_t expected_tests);

  /// Whether an entry of this name is in the folder. `name` is NUL-terminated behind its end.
  bool exists(std::string_view name);
  /// The longest name that the folder's disk takes, in bytes.
  std::size_t name_limit() const { return name_limit_; }

  void clear();

 private:
  struct Listing {
    FolderStamp stamp;
    std::vector<std::uint64_t> hashes;  // in order of arrival until `hashed`, then an open-addressing set
    bool hashed = false;
    bool case_sensitive = false;
    bool complete = false;
  };

  bool list_now(Listing& listing, std::size_t most);
  static void make_set(Listing& listing);
  static bool contains(const Listing& listing, std::uint64_t hash);
  bool is_case_sensitive(const Listing& listing) const;

  std::vector<Listing> listings_;  // by folder
  std::size_t filling_ = SIZE_MAX;
  std::string sample_;  // a name of the folder with a letter in it
  FolderReader reader_;
  FolderHandle handle_;
  Listing* current_ = nullptr;  // null: every test goes to the disk
  std::size_t name_limit_ = 255;
};

}  // namespace brindle
