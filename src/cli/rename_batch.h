#pragma once

// What preview and rename have in common: the PATHs become a list, the list gets new names.

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "cli/console.h"
#include "cli/exit_code.h"
#include "cli/rename_request.h"
#include "list/disk_names.h"
#include "list/file_list.h"

namespace brindle {

/// How many rows stand how.
struct Tally {
  std::size_t items = 0;
  std::size_t proposed = 0;  ///< promised a name
  std::size_t withheld = 0;  ///< would be, if others had no problems (--on-problem none)
  std::size_t renamed = 0;
  std::size_t unchanged = 0;  ///< nothing to change, no reason to complain
  std::size_t clashing = 0;   ///< an earlier item gets the name
  std::size_t taken = 0;      ///< the new name exists
  std::size_t missing = 0;    ///< the item itself does not exist
  std::size_t failed = 0;     ///< has a reason of its own

  std::size_t problems() const { return clashing + taken + missing + failed; }
  std::size_t& of_proposed(const ItemRecord& record);
};

/// Whether a row is one that could not be renamed, as opposed to one that need not be.
bool is_problem(const ItemRecord& record);
Tally count_rows(const FileList& files);

/// One renaming under way.
struct RenameBatch {
  RenameRequest request;
  FileList files;
  DiskNames disk_names;
  std::string folder;        ///< the current folder: names below it are shown relative to it
  std::size_t paths = 0;     ///< how many were given
  std::size_t left_out = 0;  ///< PATHs and folders that could not be looked into; this has been said

  bool is_folders() const { return request.settings.isFolders; }
  /// "file", "files", "folder" or "folders".
  std::string_view noun(std::size_t count) const;
};

/// Reads the line, gathers the list (from PATHs, or from a list file with its new names), sorts it, and previews if the
/// line says how to rename. When there is nothing to go on with (a refusal, an empty
/// list, Ctrl-C) everything has been said, and the exit code is the answer. Throws UsageError.
std::optional<ExitCode> prepare_batch(const CommandLine& line, Console& console, RenameBatch& batch,
                                      Demand demand = Demand::method);
/// Says why the parameters are refused; with --json also as an object.
ExitCode report_refusal(const CommandLine& line, Console& console, const Refusal& refusal);

/// Seconds since the program began to work.
class Stopwatch {
 public:
  double seconds() const { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count(); }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace brindle
