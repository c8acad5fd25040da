#pragma once

// Paths taken apart and put together, as bytes. Any thread.

#include <string>
#include <string_view>

namespace brindle {

/// The path's folder and last component. "/a" → "/", "a"; "a" → ".", "a".
struct PathParts {
  std::string folder;
  std::string name;
};
PathParts split_path(std::string_view path);

/// `name` below `folder`, with one "/" between them; "" stands for the root.
std::string join_path(std::string_view folder, std::string_view name);

/// `path` without "/" at its end, but for the root itself.
std::string without_trailing_slashes(std::string path);

/// Takes the first component off the front, with what "/" stand before it; "" when there is none.
std::string_view take_component(std::string_view& path);

/// Whether anything stands at a path: a dangling symbolic link, too.
bool entry_exists(const std::string& path);

/// As many links as the system follows in one path.
inline constexpr int most_links = 40;

/// What a symbolic link says, which is never empty. `folder` is a descriptor or AT_FDCWD. Returns 0 or errno.
[[nodiscard]] int read_link(int folder, const char* name, std::string& target);

}  // namespace brindle
