#include "list/open_folder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>
#include <utility>

namespace brindle {
namespace {

// Paths up to so many folders are opened whole, which is one call; and so far a way from folder to folder is looked
// for.
constexpr std::size_t near = 32;

/// A folder and those above it, at most `near` in all.
class Ancestry {
 public:
  Ancestry(const FolderTable& folders, FolderId folder) {
    for (; size_ < near && folder != FolderTable::root; folder = folders.parent(folder)) chain_[size_++] = folder;
  }
  std::span<const FolderId> chain() const { return {chain_.data(), size_}; }
  bool reaches_root() const { return size_ < near; }
  /// How far above the folder another one is; `near` when it is not there.
  std::size_t steps_up_to(FolderId other) const {
    const auto at = std::ranges::find(chain(), other);
    return at == chain().end() ? near : static_cast<std::size_t>(at - chain().begin());
  }

 private:
  std::array<FolderId, near> chain_{};
  std::size_t size_ = 0;
};

}  // namespace

// Disks that make up their inode numbers as they go say nothing by them.
bool is_as_listed(const FolderTable& folders, FolderId folder, const FolderHandle& handle) {
  const std::optional<FolderIdentity> listed = folders.identity(folder);
  FolderIdentity found;
  if (!listed || !handle) return true;
  if (!handle.identity(found)) return false;
  return found == *listed || (found.device == listed->device && !handle.has_lasting_inodes());
}

void OpenFolder::open(const FolderTable& folders, FolderId folder) {
  if (folder == folder_ && handle_) return;
  open_to_list(folders, folder);
  if (!is_as_listed(folders, folder, handle_)) handle_ = FolderHandle::closed(ESTALE);
}

void OpenFolder::open_to_list(const FolderTable& folders, FolderId folder) {
  handle_ = reach(folders, folder);
  folder_ = folder;
}

FolderHandle OpenFolder::reach(const FolderTable& folders, FolderId folder) const {
  if (handle_ && folder != FolderTable::root && folders.parent(folder) == folder_)
    return handle_.open_child(folders.name(folder).data());
  std::optional<FolderHandle> reached = reach_from_here(folders, folder);
  return reached ? std::move(*reached) : FolderHandle::open_real(folders.path(folder));
}

// Up to a folder above both, and down from there. What is above is known for certain: it was listed.
std::optional<FolderHandle> OpenFolder::reach_from_here(const FolderTable& folders, FolderId folder) const {
  const Ancestry target(folders, folder);
  if (!handle_ || target.reaches_root()) return std::nullopt;
  const Ancestry here(folders, folder_);
  std::size_t up = 0;
  std::size_t down = near;
  for (; up < here.chain().size() && down == near; ++up) down = target.steps_up_to(here.chain()[up]);
  if (down == near || !folders.identity(here.chain()[up - 1])) return std::nullopt;
  FolderHandle at = handle_.open_child(".");
  for (std::size_t step = 1; step < up && at; ++step) at = at.open_child("..");
  if (!at || !is_as_listed(folders, here.chain()[up - 1], at)) return std::nullopt;
  for (; down > 0 && at; --down) at = at.open_child(folders.name(target.chain()[down - 1]).data());
  return at;
}

}  // namespace brindle
