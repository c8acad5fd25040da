#pragma once

// The logs of renamings that were undone: they are kept in the folder "Undone" of the log folder, the newest fifty.
// Safe on any thread.

#include <string>
#include <vector>

#include "platform/status.h"

namespace brindle {

/// Whether a log is one that this program wrote for its own user: it lies in the log folder and belongs to who runs the
/// program. What any other log asks for is somebody else's word.
bool is_own_log(const std::string& log_path, const std::string& log_folder);

/// Whether a log lies where undone logs are kept.
bool is_put_away(const std::string& log_path);

/// Moves the log of a renaming that was undone into "Undone" of the log folder; where that cannot be (another disk),
/// into the trash. Older logs there than the newest fifty go to the trash, or stay where there is none. Returns its
/// new path, empty for the trash; on failure the log is where it was. The sentence names it, and its errno is set.
Result<std::string> put_undone_log_away(const std::string& log_path, const std::string& log_folder);

/// Where they are put.
std::string undone_folder(const std::string& log_folder);
/// The paths of those that are there, the one undone last first.
std::vector<std::string> undone_logs(const std::string& log_folder);

/// Those of the log folder whose runs began after a log was put away.
std::vector<std::string> logs_since_undo(const std::string& undone_log, const std::string& log_folder);

/// To be called when a log's renaming was done again as a whole: it goes, if it was put away as undone. With
/// `new_log_holds_it` nothing is lost by that; else it goes to the trash, where there is one. True when it is gone.
bool drop_redone_log(const std::string& log_path, const std::string& log_folder, bool new_log_holds_it);

}  // namespace brindle
