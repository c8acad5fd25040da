#include "platform/path.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

namespace brindle {

PathParts split_path(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return {".", std::string(path)};
  return {std::string(path.substr(0, std::max<std::size_t>(slash, 1))), std::string(path.substr(slash + 1))};
}

std::string join_path(std::string_view folder, std::string_view name) {
  std::string path;
  path.reserve(folder.size() + 1 + name.size());
  path = folder;
  if (!folder.ends_with('/')) path += '/';
  return path.append(name);
}

std::string without_trailing_slashes(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string_view take_component(std::string_view& path) {
  path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
  const std::string_view component = path.substr(0, path.find('/'));
  path.remove_prefix(component.size());
  return component;
}

bool entry_exists(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

int read_link(int folder, const char* name, std::string& target) {
  std::array<char, PATH_MAX> bytes;
  const ssize_t size = ::readlinkat(folder, name, bytes.data(), bytes.size());
  if (size > 0) target.assign(bytes.data(), static_cast<std::size_t>(size));
  return size > 0 ? 0 : size == 0 ? ENOENT : errno;
}

}  // namespace brindle
