#pragma once

// How much disk space a run's log needs, told before the run. One thread.

#include <cstdint>
#include <span>

#include "list/file_list.h"
#include "log/rename_log.h"

namespace brindle {

/// The room for the log of a run that renames these rows, each with a proposed name. With `paths_follow`, folders among
/// the rows change the paths of what lies below them as the run goes on.
LogRoom log_room(const FileList& files, std::span<const std::uint32_t> rows, bool paths_follow);

}  // namespace brindle
