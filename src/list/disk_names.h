#pragma once

// Existence tests by the thousand: the names in a folder as a set of hashes, listed once and kept as long as the folder
// stays as it was. Where a hash cannot answer alone (a disk that ignores case, a name that is found), the disk is
// asked.
//
// One thread at a time.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "list/folder_table.h"
#include "list/open_folder.h"
#include "platform/folder_handle.h"
#include "platform/own_folders.h"

namespace brindle {

class DiskNames {
 public:
  // Filling during a walk, one folder at a time: begin, the hash of every name in the folder, end. A listing that was
  // broken off is dropped by the next begin.
  void begin_listing(FolderId folder, const FolderHandle& handle);
  void add_listed(std::string_view name);
  void end_listing();

  /// Starts a run of tests: what was listed before is looked over once more.
  void begin_run(const FolderTable& folders);
  /// Turns to a folder; the tests below are about it. `expected_tests` tells how many there will be in the whole run,
  /// about: few are answered one by one. A folder is opened once a run, and listed only when it has changed since it
  /// last was.
  void enter(FolderId folder, std::size_t expected_tests);

  /// Whether an entry of this name is in the folder. `name` is NUL-terminated behind its end.
  bool exists(std::string_view name);
  /// Whether the program's own data is reached through this entry (see OwnFolders). `inode` as a listing gave it.
  bool holds_own_data(std::string_view name, std::uint64_t inode);
  /// Why the folder cannot be asked (as OpenFolder says it); 0 when it can be. Nothing exists in one that cannot.
  int error() const { return error_; }
  /// Why the entry cannot be given another name in this folder (errno: EACCES, EROFS, EPERM); 0 when it can, as far as
  /// the folder's rights tell.
  int rename_error(std::string_view name);
  /// Whether two names that are alike (text/name_fold.h) are two names in this folder. `sample` is an entry of it.
  bool tells_apart(std::string_view a, std::string_view b, std::string_view sample);
  /// Whether `other`, which differs from the entry's `name` in letter case alone, is the name of another entry.
  bool is_another_entry(std::string_view name, std::string_view other);
  /// The longest name that the folder's disk takes, in bytes.
  std::size_t name_limit() const { return name_limit_; }

 private:
  struct Listing {
    FolderStamp stamp;
    std::vector<std::uint64_t> hashes;  // in order of arrival until `hashed`, then an open-addressing set
    std::size_t name_limit = 255;
    std::uint32_t run = 0;  // the run in which it was last found up to date
    bool hashed = false;
    bool complete = false;
    int rename_error = 0;
    bool only_own = false;  // renames what is the user's own, nothing else
    bool case_known = false;
    bool case_sensitive = false;
  };

  bool refresh(Listing& listing, std::size_t expected_tests);
  bool list_now(Listing& listing, std::size_t most);
  const FolderHandle& handle();
  bool ask_disk(const char* name);
  bool is_case_sensitive(const Listing& listing, std::string_view sample);
  bool is_same_entry(std::string_view name, const std::string& other);
  static void make_set(Listing& listing);
  static bool contains(const Listing& listing, std::uint64_t hash);

  const FolderTable* folders_ = nullptr;
  std::vector<Listing> listings_;  // by folder
  std::size_t filling_ = SIZE_MAX;
  std::uint32_t run_ = 0;
  FolderReader reader_;
  FolderId folder_ = FolderTable::none;
  OwnFolders own_folders_;
  OpenFolder open_;             // follows folder_ when the disk is needed
  Listing* current_ = nullptr;  // null: every test goes to the disk
  std::size_t name_limit_ = 255;
  int error_ = 0;
  int rename_error_ = 0;
  bool only_own_ = false;
};

}  // namespace brindle
