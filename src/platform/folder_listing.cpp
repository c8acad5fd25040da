#include "platform/folder_listing.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/folder_handle.h"

namespace brindle {
namespace {

ListedEntry listed(const FolderHandle& folder, const FolderEntry& entry) {
  ListedEntry result;
  result.name = entry.name;
  struct stat facts = {};
  if (::fstatat(folder.descriptor(), entry.name.data(), &facts, AT_SYMLINK_NOFOLLOW) != 0) return result;
  result.is_link = S_ISLNK(facts.st_mode);
  // A link that leads nowhere speaks for itself.
  struct stat target = {};
  if (result.is_link && ::fstatat(folder.descriptor(), entry.name.data(), &target, 0) == 0) facts = target;
  result.is_folder = S_ISDIR(facts.st_mode);
  result.size = facts.st_size;
  result.modified = facts.st_mtim.tv_sec;
  return result;
}

}  // namespace

FolderListing list_folder(const std::string& folder, const std::atomic<bool>& cancelled) {
  FolderListing listing;
  listing.folder = folder;
  const FolderHandle handle = FolderHandle::open(folder);
  listing.error = handle.error();
  if (!handle) return listing;
  FolderReader reader;
  reader.start(handle);
  for (FolderEntry entry; !cancelled && reader.next(entry);) listing.entries.push_back(listed(handle, entry));
  listing.error = reader.error();
  return listing;
}

}  // namespace brindle
