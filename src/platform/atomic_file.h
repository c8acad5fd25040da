#pragma once

// Files that are either written whole or not there at all, and where a file that a person names for writing really
// lies. An object belongs to one thread at a time.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/file_descriptor.h"
#include "platform/folder_handle.h"
#include "platform/status.h"

namespace brindle {

/// Of files that hold names of the user's, less the umask: nobody else's.
constexpr unsigned private_file_mode = 0600;

/// An error beside the system's own: another user may have put the link there to have somebody else's file replaced.
constexpr int foreign_link_error = -1;

/// An open folder and a name in it, which was no symbolic link when it was looked at.
struct WriteTarget {
  FolderHandle folder;
  std::string name;
};

/// Follows symbolic links at the end of `path`, so that the link stays and the file it leads to is written. In a folder
/// that others than its owner may write in, a link counts only when it is ours or the folder's owner's, whatever the
/// system is set to. Returns 0, errno or foreign_link_error.
[[nodiscard]] int find_write_target(const std::string& path, WriteTarget& target);

/// A file in the making, under a name of its own beside its final place. Destroying it before it was placed deletes it,
/// unless room was reserved for it: then it stays, for take_over().
class AtomicFile {
 public:
  AtomicFile() = default;
  AtomicFile(AtomicFile&&) = delete;
  ~AtomicFile() { give_up(); }

  /// Makes the file at `temporary_path` for the user alone, replacing what an interrupted run left there (never through
  /// a symbolic link). Returns 0 or errno, as all calls below.
  [[nodiscard]] int open(const std::string& temporary_path);
  /// Writes over the file at `temporary_path` from its start, in the room it has, when it is a file of ours; else as
  /// open().
  [[nodiscard]] int take_over(const std::string& temporary_path);
  /// Reserves disk space for `size` bytes: writing that many cannot fail for want of room any more, in this process or
  /// in one that takes the file over. sync() gives back what was not used.
  [[nodiscard]] int reserve(std::uint64_t size);
  /// Makes a file that place() puts at `path`: beside it, under a name that nobody else uses. It is a new file in every
  /// respect but this: a file of ours hands on who may read, write and run it (and its group), and one of somebody else
  /// hands on whom it kept out. A symbolic link at `path` is followed where find_write_target() does.
  [[nodiscard]] int open_for(const std::string& path);
  [[nodiscard]] int open_for(WriteTarget target);
  /// After an error, further writes do nothing; sync() reports it.
  void write(std::string_view bytes);
  /// Brings the bytes to the disk.
  int sync();
  /// Gives the file its name; EEXIST when something stands there.
  [[nodiscard]] int place_exclusively(const std::string& path);
  /// Gives a file made by open_for() its name in place of whatever stands there, once its bytes are on the disk.
  [[nodiscard]] int place();
  void discard();
  /// What the destructor does.
  void give_up();
  /// Ends the writing; the file stays under its temporary name.
  void leave();

 private:
  int make(WriteTarget temporary, unsigned mode);

  WriteTarget temporary_;
  std::string name_;  // of open_for(): in the same folder
  FileDescriptor file_;
  int error_ = 0;
  bool is_reserved_ = false;   // the file may be longer than what was written
  std::uint64_t written_ = 0;  // bytes
};

/// Writes all bytes to an open file or pipe. Returns 0 or errno.
[[nodiscard]] int write_all(int descriptor, std::string_view bytes);

/// Makes a file, readable by whom `mode` says (less the umask). 0, or the errno: EEXIST when the name is taken. A
/// failure leaves no file.
[[nodiscard]] int write_new_file(const std::string& path, std::string_view bytes, unsigned mode);

/// Writes a whole file in place of the old one, as AtomicFile::open_for() and place() do: after a crash there is the
/// old or the new one. The sentence names the file.
Status write_file_atomically(const std::string& path, std::string_view content);

/// Reads a regular file from its start; never waits on a pipe or device.
class FileReader {
 public:
  /// Returns 0 or errno (EINVAL for what is no regular file).
  [[nodiscard]] int open(const std::string& path);
  /// In bytes, when the file was opened.
  std::size_t size() const { return size_; }
  /// Fills `buffer` as far as the file goes and returns how far. After a failure `error()` is not 0.
  std::size_t read(char* buffer, std::size_t size);
  int error() const { return error_; }

 private:
  FileDescriptor file_;
  int error_ = 0;
  std::size_t size_ = 0;
};

/// Reads a regular file of at most `limit` bytes. The reason, a clause, does not name the file.
Result<std::string> read_regular_file(const std::string& path, std::size_t limit);

/// Why FileReader::open() failed, or EFBIG: the file has more than `limit` bytes.
std::string reading_error_text(int error, std::size_t limit);

/// Brings the entries of the folder that holds `path` to the disk. Returns 0 or errno.
[[nodiscard]] int sync_folder_of(const std::string& path);

/// What the system says of an error number, as in "Permission denied"; more plainly where that helps nobody.
std::string system_error_text(int error);

}  // namespace brindle
