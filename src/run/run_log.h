#pragma once

// What apply needs before its first rename: a log and a journal under a name that no other run has, in this process or
// any, and to know how much disk space the log will take. One thread.

#include <cstdint>
#include <ctime>
#include <span>
#include <string>

#include "list/file_list.h"
#include "log/journal.h"
#include "log/rename_log.h"

namespace brindle {

/// The room for the log of a run that renames these rows, each with a proposed name. With `paths_follow`, folders among
/// the rows change the paths of what lies below them as the run goes on.
LogRoom log_room(const FileList& files, std::span<const std::uint32_t> rows, bool paths_follow);

/// Makes the journal and the empty "#" log of a run that begins at `when`, under the first second from `when` on that
/// neither a finished log, nor a "#" log, nor a journal has. On failure nothing is left on disk.
///
/// The run then goes: journal.add…, journal.seal(), the renames with their marks, log.addLogEntry in list order,
/// log.saveLog(), and journal.remove() if saveLog succeeded. When the run ends before its first rename for want of a
/// journal: log.discard() and journal.remove().
Status begin_run_log(const std::string& log_folder, std::time_t when, const JournalInfo& info, JournalWriter& journal,
                     RenameLogWriter& log);

}  // namespace brindle
