#include "cli/path_arguments.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>

#include "cli/cancellation.h"

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

std::string read_all(int descriptor, const std::string& name) {
  std::string bytes;
  std::array<char, 1U << 16U> piece;
  while (true) {
    const ssize_t got = ::read(descriptor, piece.data(), piece.size());
    if (got > 0) {
      bytes.append(piece.data(), static_cast<std::size_t>(got));
    } else if (got == 0 || is_cancelled()) {
      return bytes;
    } else if (errno != EINTR) {
      throw UsageError(fmt::format("cannot read {}: {}", name, std::strerror(errno)));
    }
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

std::string read_file(const std::string& name) {
  if (name == "-") return read_all(STDIN_FILENO, "standard input");
  const int descriptor = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) throw UsageError(fmt::format("cannot read {}: {}", name, std::strerror(errno)));
  const std::unique_ptr<const int, void (*)(const int*)> closing(&descriptor, [](const int* open) { ::close(*open); });
  return read_all(descriptor, name);
}

std::vector<std::string> read_paths(const CommandLine& line, const std::string& folder) {
  std::vector<std::string> paths;
  for (const std::string& path : line.operands) paths.push_back(absolute_path(path, folder));
  for (const std::string& name : line.options.from) {
    const std::string bytes = read_file(name);
    const char end = line.options.nul ? '\0' : '\n';
    for (std::string_view rest = bytes; !rest.empty();) {
      const std::size_t size = std::min(rest.find(end), rest.size());
      const std::string_view path = rest.substr(0, size);
      rest.remove_prefix(std::min(size + 1, rest.size()));
      if (path.find('\0') != std::string_view::npos) {
        throw UsageError(fmt::format("{} holds NUL bytes; add -0 to read it", name == "-" ? "standard input" : name));
      }
      if (!path.empty()) paths.push_back(absolute_path(path, folder));
    }
  }
  return paths;
}

}  // namespace brindle
