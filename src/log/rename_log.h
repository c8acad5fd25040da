#pragma once

// The rename log: one XML file a run, from which the run can be undone. Writing it in constant memory, reading it back,
// listing and deleting logs.
//
// Names and folders are on-disk bytes on both sides of this header; how they stand in XML is this module's business.
// What a Status says names the file. An object belongs to one thread at a time.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "log/log_name.h"
#include "platform/atomic_file.h"
#include "platform/date.h"
#include "text/text_arena.h"

namespace brindle {

// Writing.

/// The most bytes that a log of given renamings can take, told before it is written.
class LogRoom {
 public:
  /// What a folder's path takes in each of its entries. The path may grow by `growth` bytes before their turn comes.
  class Folder {
   public:
    Folder(std::string_view path, std::size_t growth);

   private:
    friend class LogRoom;
    std::size_t attribute_;
    std::size_t exact_;
    bool is_plain_;
  };

  void add(const Folder& folder, std::string_view old_name, std::string_view new_name);
  std::uint64_t bytes() const { return bytes_; }

 private:
  std::uint64_t bytes_ = 1024;  // the document around its entries
};

/// Writes one log. From createLogFile on, an empty log stands at the "#" path; the entries go to a file beside it that
/// becomes the finished log in saveLog. An object that is destroyed before leaves the "#" file and nothing else.
class RenameLogWriter {
 public:
  /// Puts the empty log on disk. `path` is absolute and holds the "#"; `type` is "FILES" or "FOLDERS". Fails with
  /// EEXIST when anything stands at `path`. `appversion` is for logs of runs that another version began.
  Status createLogFile(const std::string& path, std::string_view type, std::string_view appversion = {});
  /// Reserves the disk space that the run's log needs: saveLog() cannot fail for want of it then. The reserved file
  /// outlives this object when it is destroyed before saveLog().
  Status reserve(const LogRoom& room);
  /// Takes over a "#" log (which may be missing) of a run that was interrupted, and the space reserved for it.
  Status take_over(const std::string& path, std::string_view type, std::string_view appversion);
  const std::string& path() const { return path_; }

  /// Appends an entry: old and new full path. A failed write is remembered and reported by saveLog.
  void addLogEntry(std::string_view source, std::string_view target);
  /// The same with folders (no trailing "/", but for "/" itself) and names apart; entries of one folder in a row are
  /// cheapest.
  void addLogEntry(std::string_view source_folder, std::string_view source_name, std::string_view target_folder,
                   std::string_view target_name);
  std::size_t count() const { return count_; }

  /// Finishes the log: it is synced to disk and put at the "#" path with the number of entries in place of the "#",
  /// never over another file; where that name is taken, the next second's that is free is used. Then the "#" file goes.
  /// On failure the "#" file stays, and beside it only what reserve() made.
  Status saveLog();
  /// Where saveLog put the log; empty before.
  const std::string& saved_path() const { return saved_path_; }
  /// Gives the run up: removes the "#" file and what was written.
  void discard();

 private:
  struct Folder {
    std::string bytes;
    std::string attribute;  // as it stands in the log
    bool representable = true;
  };
  Status begin(const std::string& path, std::string_view type, std::string_view appversion, int error);
  static void use_folder(Folder& folder, std::string_view bytes);
  void append_exact_names(std::string_view source_name, std::string_view target_name);
  void flush_if_full();
  int place();

  std::string path_;
  std::string saved_path_;
  AtomicFile file_;
  std::string buffer_;
  Folder source_;
  Folder target_;
  std::size_t count_ = 0;
};

// Reading.

/// One renaming. The views last as long as the LogFile.
struct LogEntry {
  std::string_view source_folder;  ///< absolute
  std::string_view source_name;    ///< NUL-terminated behind its end
  std::string_view target_folder;
  std::string_view target_name;  ///< NUL-terminated behind its end
  std::string_view fault;        ///< why the entry cannot be used (then nothing else is set); empty when it can
};

struct LogFile {
  std::string appversion;
  std::string type;
  std::vector<LogEntry> entries;  ///< in document order, unusable ones too
  std::uint64_t checksum = 0;     ///< of the file's bytes
  TextArena texts;                ///< keeps the entries' bytes
};

/// Reads any file that claims to be a log. Only regular files are opened. Entries are the elements "file" directly
/// below the root "files"; one that lacks an attribute, whose folder is not absolute, or whose name cannot be that of
/// an entry (empty, ".", "..", with "/" or NUL) is there with its fault.
Result<LogFile> readLogFile(const std::string& path);
/// The same for the content of a file; the reason does not name any then.
Result<LogFile> read_log_text(std::string xml);

// Listing and deleting.

/// A "#" path for a run that begins now, in the data folder's "Logs"; the name alone when there is no data folder.
std::string getLogFilePath();

struct LogRecord {
  std::string logFileName;      ///< bytes, without the folder
  Date dateCreated;             ///< the file's birth, or its modification where the disk keeps none
  std::int32_t filesCount = 0;  ///< the number behind the last "-" of the name; 0 when there is none
};

/// The files with the extension "xml" (any case) in the folder, newest first; logs of runs still going on are left out.
/// Empty when the folder cannot be read.
std::vector<LogRecord> loadUserLogFiles(const std::string& folder);

/// Whether the file is a log with at least one entry.
bool verifyLogFile(const std::string& path);

/// Moves the file to the trash of its disk, or removes it where there is none.
Status deleteLogFile(const std::string& path);

}  // namespace brindle
