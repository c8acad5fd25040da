#include "cli/path_arguments.h"

#include <fmt/format.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>

#include "cli/input_text.h"

namespace brindle {
namespace {

struct FreeText {
  void operator()(char* text) const { ::free(text); }
};
using SystemText = std::unique_ptr<char, FreeText>;

std::string resolved(const std::string& path, std::string_view given) {
  const SystemText text(::realpath(path.c_str(), nullptr));
  if (text == nullptr) throw UsageError(fmt::format("{}: {}", given, std::strerror(errno)));
  return text.get();
}

// Behind the last component "..", 0 when there is none.
std::size_t end_of_last_dots(std::string_view path) {
  for (std::size_t at = path.size(); (at = path.rfind("..", at)) != std::string_view::npos; --at) {
    const bool begins = at == 0 || path[at - 1] == '/';
    const bool ends = at + 2 == path.size() || path[at + 2] == '/';
    if (begins && ends) return at + 2;
    if (at == 0) break;
  }
  return 0;
}

// Appends the components of `path` that mean something.
void append_components(std::string_view path, std::string& absolute) {
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/'), path.size());
    const std::string_view component = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    if (component.empty() || component == ".") continue;
    if (absolute.empty() || absolute.back() != '/') absolute += '/';
    absolute += component;
  }
}

}  // namespace

std::string current_folder() {
  const SystemText folder(::getcwd(nullptr, 0));
  return folder == nullptr ? "" : folder.get();
}

std::string absolute_path(std::string_view path, const std::string& folder) {
  if (path.empty()) throw UsageError("an argument is empty; a path or name cannot be");
  if (path.front() != '/' && folder.empty()) throw UsageError(fmt::format("{}: the current folder is gone", path));
  std::string absolute = path.front() == '/' ? "" : folder;
  const std::size_t dots = end_of_last_dots(path);
  if (dots != 0) {
    absolute =
        absolute.empty() ? std::string(path.substr(0, dots)) : fmt::format("{}/{}", absolute, path.substr(0, dots));
    absolute = resolved(absolute, path);
  }
  append_components(path.substr(dots), absolute);
  return absolute.empty() ? "/" : absolute;
}

namespace {

void append_paths(std::string_view text, const std::string& name, const CommandLine& line, const std::string& folder,
                  std::vector<std::string>& paths) {
  const char end = line.options.nul ? '\0' : '\n';
  while (!text.empty()) {
    const std::size_t size = std::min(text.find(end), text.size());
    const std::string_view path = text.substr(0, size);
    text.remove_prefix(std::min(size + 1, text.size()));
    if (path.find('\0') != std::string_view::npos) {
      throw UsageError(fmt::format("{} holds NUL bytes; add -0 to read it", name));
    }
    if (path.empty()) continue;
    if (paths.size() == most_paths)
      throw UsageError(fmt::format("more than {} PATHs are too many for one run", most_paths));
    paths.push_back(absolute_path(path, folder));
  }
}

}  // namespace

std::vector<std::string> read_paths(const CommandLine& line, const std::string& folder, Console& console) {
  std::vector<std::string> paths;
  for (const std::string& path : line.operands) paths.push_back(absolute_path(path, folder));
  for (const std::string& name : line.options.from) {
    append_paths(read_input_text(name, console), name == "-" ? "standard input" : name, line, folder, paths);
  }
  return paths;
}

}  // namespace brindle
