#pragma once

// Where an open panel can begin: the person's own folders, disks, bookmarks.

#include <string>
#include <string_view>
#include <vector>

namespace brindle {

struct Place {
  std::string_view icon;
  std::string title;  ///< UTF-8
  std::string path;   ///< bytes
};

/// Touches no disk but the home folder's: one that does not answer must not be waited for.
std::vector<Place> find_places();

/// The disks that a table of mounts (proc(5), "mounts") has where desktops put those that come and go.
std::vector<Place> mounted_places(std::string_view mounts);
/// The bookmarks of the file managers: a line each, the address and perhaps a title.
std::vector<Place> bookmarked_places(std::string_view lines);

}  // namespace brindle
