#include "platform/write_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <utility>

#include "platform/atomic_file.h"

namespace brindle {
namespace {

bool may_follow(const FolderHandle& folder, const struct stat& link) {
  struct stat around {};
  if (::fstat(folder.descriptor(), &around) != 0) return false;
  const bool is_shared = (around.st_mode & (S_IWGRP | S_IWOTH)) != 0;
  return !is_shared || link.st_uid == ::geteuid() || link.st_uid == around.st_uid;
}

// Where a link in `folder` leads to. 0 or errno.
int read_link(const WriteTarget& link, const std::string& folder, std::string& path) {
  std::array<char, PATH_MAX> text{};
  const ssize_t size = ::readlinkat(link.folder.descriptor(), link.name.c_str(), text.data(), text.size());
  if (size < 0) return errno;
  const std::string leads_to(text.data(), static_cast<std::size_t>(size));
  path = leads_to.starts_with('/') ? leads_to : folder + "/" + leads_to;
  return 0;
}

}  // namespace

int find_write_target(const std::string& path, WriteTarget& target) {
  constexpr int most_links = 40;  // as many as the system follows
  std::string next = path;
  for (int links = 0; links <= most_links; ++links) {
    PathParts parts = split_path(next);
    if (parts.name.empty()) return EISDIR;
    target = {FolderHandle::open(parts.folder), std::move(parts.name)};
    if (!target.folder) return target.folder.error();
    struct stat status {};
    const int found = ::fstatat(target.folder.descriptor(), target.name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
    if (found != 0) return errno == ENOENT ? 0 : errno;
    if (!S_ISLNK(status.st_mode)) return 0;
    if (!may_follow(target.folder, status)) return foreign_link_error;
    if (const int error = read_link(target, parts.folder, next); error != 0) return error;
  }
  return ELOOP;
}

}  // namespace brindle
