#pragma once

// What a folder holds, for people to choose from. Safe on any thread.

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace brindle {

struct ListedEntry {
  std::string name;        ///< bytes
  bool is_folder = false;  ///< or a link that leads to one
  bool is_link = false;
  std::int64_t size = 0;      ///< bytes; of what a link leads to
  std::int64_t modified = 0;  ///< seconds since 1970
};

struct FolderListing {
  std::string folder;  ///< absolute, bytes
  std::vector<ListedEntry> entries;
  int error = 0;  ///< errno, when the folder could not be read, or not to its end
};

/// The entries of a folder as the disk orders them. Ends early, with what there is, when `cancelled` is set.
FolderListing list_folder(const std::string& folder, const std::atomic<bool>& cancelled);

}  // namespace brindle
