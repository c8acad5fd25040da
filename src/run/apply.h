#pragma once

// Apply: carries out the proposed names on disk, one rename an item, with a journal before and a log after. Any thread
// but one at a time for a list: nobody else may touch the list until it returns.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "list/file_list.h"
#include "platform/job.h"
#include "settings/rename_settings.h"

namespace brindle {

/// How a run is to be made; taken from the settings record.
struct ApplyOptions {
  bool isFolders = false;  ///< the list holds folders
  bool isIncludeSubFolders = true;
  std::optional<Method> method;  ///< whose names they are, unless they came from a chain
  std::int32_t generalOptionIndex = 0;
  bool is_chain = false;     ///< the names came from a chain of rules
  std::string log_folder;    ///< absolute; must exist
  bool without_log = false;  ///< the person chose to go on although no log can be written
  bool permute = false;      ///< a name counts as free when the row that has it leaves it in the same run
};

struct ApplyResult {
  std::size_t renamed = 0;
  std::size_t attempted = 0;                  ///< rows that carried a proposed name and were reached
  std::optional<std::uint32_t> first_failed;  ///< the first row that was reached and kept its name
  bool cancelled = false;
  bool isHasFilesForRenaming = false;  ///< some rows still carry a proposed name
  bool log_failed = false;             ///< no log could be created; nothing was renamed unless without_log
  std::string log_path;                ///< the saved log; empty when there is none
  std::string error;                   ///< why the log could not be created or saved (UTF-8); the journal then stays
};

/// Whether parents must go before what they hold, and paths follow renamed folders: where folders below folders are
/// renamed, and with rename-from-list.
bool goes_in_location_order(const ApplyOptions& options);
/// Puts the list into the order in which the run goes; done beforehand, rows keep their places during the run.
void put_in_order_of_run(FileList& files, const ApplyOptions& options);

/// Puts the list into the order of the run and renames every row that carries a proposed name; the paths below a
/// renamed folder follow it where that order is by location. Nothing on disk is ever replaced: a row whose target is
/// taken gets "… Already Exists", one whose rename fails gets "No Changes" and the reason. With `permute`, a row goes
/// after whoever has its new name, and rows that pass their names round are renamed together or not at all. A cancelled
/// run leaves the rows not reached as they were. The rows' statuses and paths, and the duplicate set, are up to date
/// afterwards.
ApplyResult applyRenames(FileList& files, const ApplyOptions& options, const JobControl& control);

}  // namespace brindle
