#pragma once

// The journal: a whole run as it is meant, on disk before its first rename, and how far it got. Whatever stops the
// program, recovery (run/recovery.h) finishes the run's log from it.
//
// Written in one go (add…, seal), then marked as the run proceeds. The file is locked for the life of the writer, so
// that a run still going on is known from one that was interrupted.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "log/journal_format.h"
#include "platform/file_descriptor.h"
#include "platform/status.h"

namespace brindle {

/// What became of one renaming.
enum class JournalMark : std::uint8_t {
  none = 0,    ///< not reached
  begun = 1,   ///< about to be carried out, or being carried out
  done = 2,    ///< renamed
  failed = 3,  ///< not renamed
  half = 4,    ///< being carried out in two steps (platform/move.h): the entry may have both names
};

/// Facts of the run as a whole.
struct JournalInfo {
  bool isFolders = false;     ///< the log's type is "FOLDERS"
  bool paths_follow = false;  ///< paths below a renamed folder follow it while the run goes on
  std::string appversion;     ///< of the program that began the run; at most 31 bytes
};

/// Writes a journal. What a Status says names the file. All calls but mark() belong to one thread. Destroying a writer
/// unlocks the journal and leaves it on disk.
class JournalWriter {
 public:
  /// Makes the file and locks it. Fails with EEXIST when anything stands at the path.
  Status create(const std::string& path, const JournalInfo& info);

  /// Says once which path (bytes, absolute, as it is before the run) a folder's number stands for, before its first
  /// entry. Numbers are the caller's, below 2^32 - 2.
  void add_folder(std::uint32_t folder, std::string_view path);
  /// Appends the renaming number size(): names are bytes of at most 65,535; `inode` is 0 when not known.
  void add(std::uint32_t folder, std::string_view old_name, std::string_view new_name, std::uint64_t inode);
  /// Says that the next `count` renamings (two or more, of one folder) pass their names round (run/name_cycle.h), with
  /// the help of `reserved`, a name that nothing has.
  void begin_cycle(std::size_t count, std::string_view reserved);
  std::size_t size() const { return count_; }

  /// Ends the list and brings it, and the file's entry in its folder, to the disk. No rename may be made before this
  /// succeeded. On failure (full disk) the journal is of no use: remove() it.
  Status seal();

  /// After seal(): records what became of entry `index` (below size()). One store into a shared mapping whose disk
  /// space is reserved; kept whatever happens to the process, not brought to the disk by itself. Different entries may
  /// be marked by different threads at once.
  void mark(std::size_t index, JournalMark mark) noexcept { marks_.set(index, static_cast<std::uint8_t>(mark)); }

  /// Deletes the journal: the run's log is safe, or nothing was begun.
  void remove();

 private:
  void append(const void* data, std::size_t size);
  void flush();
  bool write_header();
  Status status() const;
  void close();

  std::string path_;
  JournalInfo info_;
  FileDescriptor file_;
  int error_ = 0;  // errno of the first call that failed
  std::unique_ptr<char[]> buffer_;
  std::size_t filled_ = 0;
  std::uint64_t written_ = 0;  // the header's place included
  Checksum checksum_;
  std::size_t count_ = 0;
  bool has_cycles_ = false;
  std::uint64_t marks_offset_ = 0;
  MarkMap marks_;
};

/// One renaming as it was meant.
struct JournalEntry {
  std::uint32_t folder = 0;  ///< index into JournalReader::folders()
  JournalMark mark = JournalMark::none;
  std::uint64_t inode = 0;
  std::string_view old_name;  ///< valid as long as the reader
  std::string_view new_name;
};

/// Entries, one behind the other and of one folder, that pass their names round.
struct JournalCycle {
  std::size_t first = 0;
  std::size_t count = 0;      ///< two or more, all of them entries
  std::string_view reserved;  ///< the name of one entry, free before the run; valid as long as the reader
};

/// Reads a journal and checks every byte of it but the marks. One thread.
class JournalReader {
 public:
  enum class State {
    missing,      ///< there is no such file (any more), or it cannot be read (`error()` is then set)
    in_progress,  ///< the run that writes it is still going on
    unsealed,     ///< nothing was begun
    damaged,      ///< something was begun, but the list cannot be made out (`error()`)
    sealed,       ///< everything below is set
  };

  /// Opens, locks (until the reader is destroyed) and reads.
  State open(const std::string& path);
  /// Reads the bytes of a journal, which must live as long as the reader.
  State parse(std::string_view bytes);

  const std::string& error() const { return error_; }
  const JournalInfo& info() const { return info_; }
  const std::vector<std::string_view>& folders() const { return folders_; }
  const std::vector<JournalEntry>& entries() const { return entries_; }
  const std::vector<JournalCycle>& cycles() const { return cycles_; }  ///< in the order of their entries

  /// Writes down what recovery does with an entry, for the next one, should this one be stopped.
  void mark(std::size_t index, JournalMark mark) noexcept;

 private:
  State read_file();
  bool are_cycles_whole() const;
  bool read_records(std::string_view body, std::uint64_t count);
  void read_marks(std::string_view marks);

  FileDescriptor file_;
  std::string error_;
  std::string bytes_;
  std::uint64_t marks_offset_ = 0;
  JournalInfo info_;
  std::vector<std::string_view> folders_;
  std::vector<JournalEntry> entries_;
  std::vector<JournalCycle> cycles_;
};

}  // namespace brindle
