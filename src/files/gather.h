#pragma once

// Filling the file list: the walk over paths and folders.

#include <cstddef>
#include <span>
#include <string>

#include "pipeline/disk_names.h"
#include "pipeline/file_list.h"
#include "pipeline/job.h"

namespace brindle {

/// What is gathered.
struct GatherOptions {
  bool isFolders = false;  ///< folders are the items; else files (and packages, links, and what is neither)
  bool isIncludeSubFolders = true;
  bool include_hidden = false;     ///< admit names that begin with "."
  bool renames_from_list = false;  ///< the method is rename-from-list: every item starts at "No Changes"
};

/// What a load did.
struct GatherResult {
  std::size_t searchFilesCount = 0;  ///< items accepted
  std::size_t hidden_paths = 0;      ///< given paths left out because their names begin with "."
  bool cancelled = false;
};

/// The load job. Walks absolute paths in the given order, folders before what they hold, and appends what it accepts to
/// the list, never a path twice. In folders mode with subfolders the given folders themselves leave the list again (and
/// stay in the duplicate set). Unreadable folders yield nothing; links and packages are never entered; no depth is too
/// deep. `disk_names` (may be null) is told what the listings hold, so that a preview need not list the folders again.
GatherResult addFiles(FileList& files, std::span<const std::string> paths, const GatherOptions& options,
                      DiskNames* disk_names, const JobControl& control);

/// The walk alone, without taking the given folders out again.
GatherResult addFilesToList(FileList& files, std::span<const std::string> paths, const GatherOptions& options,
                            DiskNames* disk_names, const JobControl& control);

}  // namespace brindle
