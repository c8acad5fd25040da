#include "platform/own_folders.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>

#include "platform/data_folders.h"

namespace brindle {
namespace {

constexpr int most_links = 40;  // as many as the system follows in one path

std::string target_of_link(const std::string& path) {
  std::array<char, PATH_MAX> target{};
  const ssize_t size = ::readlink(path.c_str(), target.data(), target.size());
  return size > 0 ? std::string(target.data(), static_cast<std::size_t>(size)) : std::string();
}

// The first component off the front of `path`, without slashes; "" at its end.
std::string take_component(std::string& path) {
  const std::size_t begin = path.find_first_not_of('/');
  if (begin == std::string::npos) return {};
  const std::size_t end = path.find('/', begin);
  std::string component = path.substr(begin, end - begin);
  path.erase(0, end);
  return component;
}

}  // namespace

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
  link_target = S_ISLNK(status.st_mode) ? target_of_link(path) : std::string();
  return !S_ISLNK(status.st_mode) || !link_target.empty();
}

// Component by component, as the system walks a path: a link on the way counts, and so does all that it leads through.
void OwnFolders::add(std::string path) {
  std::string at;  // where the walk is, free of links; "" for the root
  std::string target;
  int links = 0;
  for (std::string name = take_component(path); !name.empty(); name = take_component(path)) {
    if (name == ".") continue;
    if (name == "..") {
      at.erase(at.empty() ? 0 : at.rfind('/'));
      continue;
    }
    const std::string entry = fmt::format("{}/{}", at, name);
    if (!add_entry(entry, target)) return;
    if (target.empty()) {
      at = entry;
    } else {
      if (++links > most_links) return;
      if (target.starts_with('/')) at.clear();
      path = fmt::format("{}/{}", target, path);
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
