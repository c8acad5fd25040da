#pragma once

// What a path that somebody gives (an argument, a dropped file, a line of a list) stands for on disk.

#include <string>
#include <string_view>

namespace brindle {

struct RealPath {
  std::string path;  ///< bytes, absolute, without ".", ".." and doubled or trailing "/"; no parent is a symbolic link
  int error = 0;     ///< errno when that cannot be had: `path` is then what was given, made absolute
};

/// Makes paths absolute and clean and resolves their parents; the last component stays what it is, so a link that is
/// given is the link itself, with or without a "/" behind it ("link/." is the folder that it leads to). Of a path that
/// leads to nothing the part that exists is resolved. Paths of any length.
///
/// Paths of one folder, given one after the other, are cheap: what was found out about the last folder is kept. One
/// thread.
class RealPaths {
 public:
  /// Relative paths are below `current_folder`, which is absolute; empty: they cannot be had (ENOENT).
  explicit RealPaths(std::string current_folder) : current_folder_(std::move(current_folder)) {}

  RealPath of(std::string_view given);

 private:
  struct Place {
    std::string path;
    int error = 0;
  };
  const Place& parent_place(std::string_view parent);

  std::string current_folder_;
  std::string parent_;  // whose place is known
  Place place_;
};

/// The current folder, absolute; empty when it is gone.
std::string current_folder();

}  // namespace brindle
