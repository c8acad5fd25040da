#include "cli/path_arguments.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

#include "cli/input_text.h"
#include "platform/real_path.h"
#include "platform/translation.h"
#include "run/rename_row.h"

namespace brindle {
namespace {

std::string meaningful(std::string_view path, const std::string& folder) {
  if (path.empty()) throw UsageError(translated("an argument is empty; a path or name cannot be"));
  if (path.front() != '/' && folder.empty()) throw UsageError(translated("{}: the current folder is gone", path));
  return std::string(path);
}

}  // namespace

std::string real_path(std::string_view given) {
  const std::string folder = current_folder();
  RealPath real = RealPaths(folder).of(meaningful(given, folder));
  if (real.error != 0) throw UsageError(fmt::format("{}: {}", given, translated(describe_error(real.error))));
  return std::move(real.path);
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
      throw UsageError(translated("{} holds NUL bytes; add -0 to read it", name));
    }
    if (path.empty()) continue;
    if (paths.size() == most_paths)
      throw UsageError(translated("more than {} PATHs are too many for one run", most_paths));
    paths.push_back(meaningful(path, folder));
  }
}

}  // namespace

std::vector<std::string> read_paths(const CommandLine& line, const std::string& folder, Console& console) {
  std::vector<std::string> paths;
  for (const std::string& path : line.operands) paths.push_back(meaningful(path, folder));
  for (const std::string& name : line.options.from) {
    append_paths(read_input_text(name, console), name == "-" ? translated("standard input") : name, line, folder,
                 paths);
  }
  return paths;
}

}  // namespace brindle
