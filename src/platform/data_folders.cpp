#include "platform/data_folders.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/path.h"
#include "platform/translation.h"

namespace brindle {
namespace {

std::string absolute_variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? std::string(value) : std::string();
}

bool is_folder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

int make_folder(const std::string& path, unsigned mode) {
  if (::mkdir(path.c_str(), mode) == 0) return 0;
  const int error = errno;
  return is_folder(path) ? 0 : error;
}

// What lies in these folders names what the user has; earlier versions made them as open as any.
void close_to_others(const std::string& path) {
  const FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  const bool is_open =
      folder && ::fstat(folder.get(), &status) == 0 && status.st_uid == ::geteuid() && (status.st_mode & 077U) != 0;
  const int ignored = is_open ? ::fchmod(folder.get(), status.st_mode & 0700U) : 0;  // a disk may know no permissions
  static_cast<void>(ignored);
}

// One of the XDG base folders.
std::string base_folder(const char* variable, const char* below_home) {
  std::string folder = absolute_variable(variable);
  if (!folder.empty()) return without_trailing_slashes(std::move(folder));
  const std::string home = absolute_variable("HOME");
  return home.empty() ? home : home + below_home;
}

}  // namespace

std::string data_home() {
  return base_folder("XDG_DATA_HOME", "/.local/share");
}

std::string config_home() {
  return base_folder("XDG_CONFIG_HOME", "/.config");
}

std::string getAppPath() {
  const std::string home = data_home();
  return home.empty() ? home : home + "/Tessalon/Brindle4";
}

Status make_folders(const std::string& path, unsigned mode) {
  int error = 0;
  for (std::size_t end = 0; error == 0 && end != std::string::npos;) {
    end = path.find('/', end + 1);
    error = make_folder(path.substr(0, end), mode);
  }
  if (error == 0) return {};
  return Status(translated("the folder “{}” cannot be made: {}", path, translated(system_error_text(error))), error);
}

Status createApplicationUsersFolder(std::string_view name) {
  const std::string data_folder = getAppPath();
  if (data_folder.empty()) {
    return Status(translated("there is no home folder: neither HOME nor XDG_DATA_HOME is set to an absolute path"),
                  ENOENT);
  }
  const std::string path = name.empty() ? data_folder : join_path(data_folder, name);
  Status made = make_folders(path, 0700);
  if (made.ok()) close_to_others(path);
  return made;
}

}  // namespace brindle
