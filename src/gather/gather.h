#pragma once

// Filling the file list: the walk over paths and folders. Any thread, the list the caller's alone until it returns.

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "list/disk_names.h"
#include "list/file_list.h"
#include "platform/job.h"

namespace brindle {

/// What is gathered.
struct GatherOptions {
  bool isFolders = false;  ///< folders are the items; else files (and packages, links, and what is neither)
  bool isIncludeSubFolders = true;
  bool include_hidden = false;      ///< admit names that begin with "."
  bool renames_from_list = false;   ///< the method is rename-from-list: every item starts at "No Changes"
  std::string current_folder = {};  ///< what relative paths are below; "": there must be none
};

/// What could not be looked into, or had at all.
struct UnreadablePath {
  FolderId path = FolderTable::root;  ///< in the list's table, which need not hold items of it
  int error = 0;                      ///< errno, as describe_error tells it
};

/// What a load did.
struct GatherResult {
  std::size_t searchFilesCount = 0;        ///< items accepted
  std::vector<std::string> hidden_paths;   ///< given paths left out because their names begin with "."; real
  std::vector<UnreadablePath> unreadable;  ///< in the order in which they were met
  bool cancelled = false;
};

/// The load job. Walks paths in the given order, folders before what they hold, and appends what it accepts to the
/// list, never a path twice. Paths are taken as people give them (platform/real_path.h says what they mean). In folders
/// mode with subfolders the given folders themselves leave the list again (and stay in the duplicate set). Links and
/// packages are never entered, even when a folder becomes a link meanwhile; no depth is too deep. The list learns which
/// folder on disk each of its folders is. What cannot be read, or not to its end, is told in the result; so is a given
/// path that cannot be had, or in folders mode does not exist (a missing file is an item). `disk_names` (may be null)
/// is told what the listings hold, so that a preview need not list the folders again.
GatherResult addFiles(FileList& files, std::span<const std::string> paths, const GatherOptions& options,
                      DiskNames* disk_names, const JobControl& control);

/// The walk alone, without taking the given folders out again.
GatherResult addFilesToList(FileList& files, std::span<const std::string> paths, const GatherOptions& options,
                            DiskNames* disk_names, const JobControl& control);

}  // namespace brindle
