#pragma once

// The folders that the program itself works in, and all that their paths lead through: none of these can be renamed
// while it runs, or the log of the run would be written to where nothing is. Safe on any thread.

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

#include "platform/folder_handle.h"

namespace brindle {

/// Why an entry for which OwnFolders::hang_on() holds keeps its name.
inline constexpr std::string_view holds_own_data = "it holds Brindle's own data";

/// Known by device and inode, so that symbolic links, bind mounts and letter case make no difference.
class OwnFolders {
 public:
  /// None.
  OwnFolders() = default;
  /// The data folder, the configuration's, and that of the logs (an absolute path, or empty), as they are now.
  static OwnFolders with_logs_in(const std::string& log_folder);

  /// False for most names, without a look at the disk: then hang_on() is false too. `inode` as a listing gave it.
  bool may_hang_on(std::string_view name, std::uint64_t inode) const;
  /// Whether the path of one of the folders leads through this entry: a folder, or a symbolic link.
  bool hang_on(const FolderHandle& folder, const char* name) const;

 private:
  struct Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    bool operator==(const Identity&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Identity& identity) const { return identity.inode ^ (identity.device << 32U); }
  };

  void add(std::string path);
  bool add_entry(const std::string& path, std::string& link_target);

  std::unordered_set<Identity, Hash> entries_;
  std::unordered_set<std::uint64_t> inodes_;
  std::set<std::string, std::less<>> names_;
};

}  // namespace brindle
