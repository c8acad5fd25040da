#include "platform/module.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "platform/message_log.h"
#include "platform/path.h"

namespace brindle {
namespace {

constexpr const char* running_program = "/proc/self/exe";

std::string folder_of_program() {
  std::string path;
  return read_link(AT_FDCWD, running_program, path) == 0 ? split_path(path).folder : std::string();
}

// Nobody else can have put it there: a program that was copied to where others write must not run their code.
bool is_trusted(const std::string& path) {
  struct stat status {};
  struct stat own {};
  if (::stat(path.c_str(), &status) != 0 || ::stat(running_program, &own) != 0) return false;
  const bool is_ours = status.st_uid == 0 || status.st_uid == ::geteuid() || status.st_uid == own.st_uid;
  return is_ours && (status.st_mode & S_IWOTH) == 0;
}

}  // namespace

std::string module_path(std::string_view file_name) {
  const std::string program_folder = folder_of_program();
  if (program_folder.empty()) return {};
  for (const char* below : {"modules", "../lib/brindle"}) {
    const std::string folder = join_path(program_folder, below);
    std::string path = join_path(folder, file_name);
    if (is_trusted(folder) && is_trusted(path)) return path;
  }
  return {};
}

Module::Module(const char* file_name, std::uint32_t revision) {
  const std::string path = module_path(file_name);
  if (path.empty()) {
    log_failure("Module", fmt::format("{} is not beside the program; install the program again", file_name));
    return;
  }
  handle_ = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) {
    log_failure("Module", ::dlerror());
    return;
  }
  auto* const revision_there = function<std::uint32_t()>("brindle_module_revision");
  if (revision_there != nullptr && revision_there() == revision) return;
  log_failure("Module", std::string(file_name) + " is of another version: start the program again");
  handle_ = nullptr;  // left open: what it started must not lose its code
}

void* Module::symbol(const char* name) const {
  return handle_ == nullptr ? nullptr : ::dlsym(handle_, name);
}

}  // namespace brindle
