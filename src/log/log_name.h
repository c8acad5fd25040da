#pragma once

// The names of logs and of what stands beside them. "Log 15-11-2026 03-17-45-#.xml" belongs to the run that began at
// that second (local time) as long as it goes on; in the finished log's name the number of items renamed stands in
// place of "#".
//
// Paths are bytes; "#" counts in the file name only, never in its folder's path. Safe on any thread.

#include <cstddef>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

/// The "#" name of a run that begins at `when`.
std::string getNewLogFileName(std::time_t when);

/// Whether the name (without folder) has the form of a "#" name, or of the journal beside it. Letter case does not
/// count: some disks that ignore it list names in lower case.
bool is_open_log_name(std::string_view name);
bool is_journal_name(std::string_view name);

/// When the run of a "#" log began, from its name; -1 when the name does not tell.
std::time_t log_time(const std::string& path);

/// The "#" path of the next second, in the same folder; empty when the name does not tell the time.
std::string next_log_path(const std::string& path);

/// The path with the "#" replaced by the count; the path itself when its name holds none.
std::string finished_log_path(const std::string& path, std::size_t count);

/// The finished logs of the same second as a "#" log, in the same folder.
std::vector<std::string> find_finished_logs(const std::string& path);

/// The files that stand beside a "#" log while its run goes on: the journal, and the finished log in the making.
std::string journal_path(const std::string& path);
std::string unfinished_log_path(const std::string& path);
/// The "#" log's path of a journal.
std::string log_path_of_journal(const std::string& path);

}  // namespace brindle
