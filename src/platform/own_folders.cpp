#include "platform/own_folders.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/data_folders.h"
#include "platform/path.h"

namespace brindle {

OwnFolders OwnFolders::with_logs_in(const std::string& log_folder) {
  OwnFolders own;
  const std::string config = config_home();
  own.add(getAppPath());
  own.add(config.empty() ? config : config + "/Tessalon");
  own.add(log_folder);
  return own;
}

// False when there is nothing. `link_target` is where it leads, empty for what is no link.
bool OwnFolders::add_entry(const std::string& path, std::string& link_target) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return false;
  entries_.insert({status.st_dev, status.st_ino});
  inodes_.insert(status.st_ino);
  names_.insert(path.substr(path.rfind('/') + 1));
  link_target.clear();
  return !S_ISLNK(status.st_mode) || read_link(AT_FDCWD, path.c_str(), link_target) == 0;
}

// Component by component, as the system walks a path: a link on the way counts, and so does all that it leads through.
void OwnFolders::add(std::string path) {
  std::string_view rest = path;
  std::string at;  // where the walk is, free of links; "" for the root
  std::string target;
  int links = 0;
  for (std::string_view name = take_component(rest); !name.empty(); name = take_component(rest)) {
    if (name == ".") continue;
    if (name == "..") {
      at.erase(at.empty() ? 0 : at.rfind('/'));
      continue;
    }
    const std::string entry = join_path(at, name);
    if (!add_entry(entry, target)) return;
    if (target.empty()) {
      at = entry;
    } else {
      if (++links > most_links) return;
      if (target.starts_with('/')) at.clear();
      path = join_path(target, rest);
      rest = path;
    }
  }
}

bool OwnFolders::may_hang_on(std::string_view name, std::uint64_t inode) const {
  return inodes_.contains(inode) || names_.contains(name);
}

bool OwnFolders::hang_on(const FolderHandle& folder, const char* name) const {
  EntryFacts facts;
  return folder && folder.look_up(name, facts) && entries_.contains({facts.device, facts.inode});
}

}  // namespace brindle
