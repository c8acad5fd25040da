#pragma once

// An open folder, and everything that is asked of the entries in it. Look-ups and renames relative to an open folder
// cost one path component each, and cannot be led astray by a folder that is moved meanwhile.

#include <sys/types.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_descriptor.h"

namespace brindle {

/// What a folder's listing says of an entry without a look at the entry itself.
enum class EntryKind : std::uint8_t { unknown, file, folder, link, other };

struct FolderEntry {
  std::string_view name;  ///< bytes; NUL-terminated behind its end; valid until the next call of the reader
  std::uint64_t inode = 0;
  EntryKind kind = EntryKind::unknown;
};

/// Facts of one entry, its last symbolic link not followed.
struct EntryFacts {
  EntryKind kind = EntryKind::unknown;
  std::uint64_t inode = 0;
  std::uint64_t device = 0;
  std::uint64_t links = 0;
};

/// Identifies the contents of a folder: equal stamps mean that no entry came, went or changed its name in between.
struct FolderStamp {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t modified_ns = 0;  ///< since 1970
  std::int64_t changed_ns = 0;
  bool operator==(const FolderStamp&) const = default;
};

/// Which folder it is, whatever path leads to it.
struct FolderIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  bool operator==(const FolderIdentity&) const = default;
};

/// Owns one descriptor. Movable; one thread at a time, though the look-ups below may run on several threads at once.
class FolderHandle {
 public:
  FolderHandle() = default;

  // Absolute paths may have any length (longer than PATH_MAX too). On failure the handle is empty and `error()` holds
  // errno.

  /// Opens the folder at an absolute path, through whatever links there are: for folders that only their owner changes
  /// (where this program keeps its own files).
  static FolderHandle open(const std::string& path);
  /// Opens the folder at an absolute path no component of which is a symbolic link; ELOOP when one is. A folder that
  /// may not be listed is opened all the same, for look-ups and renames.
  static FolderHandle open_real(const std::string& path);
  /// Opens a folder inside this one (one name, or ".."); ELOOP when it is a symbolic link.
  FolderHandle open_child(const char* name) const;
  /// An empty handle that says why.
  static FolderHandle closed(int error);

  explicit operator bool() const { return static_cast<bool>(folder_); }
  int descriptor() const { return folder_.get(); }
  int error() const { return error_; }

  /// False when there is no such entry (errno tells). `name` is NUL-terminated.
  bool look_up(const char* name, EntryFacts& facts) const;
  bool exists(const char* name) const;
  bool stamp(FolderStamp& stamp) const;
  /// Brings the names in the folder to the disk, where it can.
  void sync() const;
  bool identity(FolderIdentity& identity) const;
  /// Why this process may not rename what is in the folder: EACCES, EROFS, EPERM (a folder that cannot be changed); 0
  /// when it may. In a folder that only lets owners rename (sticky), `only_own` is set, and what is not ours stays.
  int rename_access(bool& only_own) const;
  /// Whether an entry belongs to this process's user.
  bool is_own(const char* name) const;
  /// Whether inode numbers stay with their files here, across mounts and renames. FAT, exFAT and most network and FUSE
  /// disks make theirs up as they go.
  bool has_lasting_inodes() const;
  /// Whether the disk's kind and the folder's flags promise that a name in other letters is another name. A disk may
  /// have been set up to break that: look for a name that is there in other letters, too.
  bool tells_case_apart() const;
  /// The longest name that the folder's disk takes, in bytes (255 when the disk does not say).
  std::size_t name_limit() const;

 private:
  explicit FolderHandle(int descriptor, int error) : folder_(descriptor), error_(error) {}
  FileDescriptor folder_;
  int error_ = 0;
};

/// Reads the entries of a folder in the order in which the disk gives them, "." and ".." left out. One reader can read
/// many folders, one after the other; its buffer is kept.
class FolderReader {
 public:
  FolderReader();

  /// Starts on a folder, from its first entry. The handle must outlive the reading.
  void start(const FolderHandle& folder);
  /// False at the end, and when the folder cannot be read on (`error()` is then not 0).
  bool next(FolderEntry& entry);
  int error() const { return error_; }

 private:
  bool fill();

  static constexpr std::size_t buffer_size = std::size_t{256} * 1024;
  std::unique_ptr<char[]> buffer_;
  int descriptor_ = -1;
  std::size_t position_ = 0;
  std::size_t filled_ = 0;
  int error_ = 0;
};

// What a folder holds, for people to choose from.

struct ListedEntry {
  std::string name;        ///< bytes
  bool is_folder = false;  ///< or a link that leads to one
  bool is_link = false;
  std::int64_t size = 0;      ///< bytes; of what a link leads to
  std::int64_t modified = 0;  ///< seconds since 1970
};

struct FolderListing {
  std::string folder;  ///< absolute, bytes
  std::vector<ListedEntry> entries;
  int error = 0;  ///< errno, when the folder could not be read, or not to its end
};

/// The entries of a folder as the disk orders them. Ends early, with what there is, when `cancelled` is set.
FolderListing list_folder(const std::string& folder, const std::atomic<bool>& cancelled);

}  // namespace brindle
