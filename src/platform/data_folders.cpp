#include "platform/data_folders.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <pugixml.hpp>

#include "platform/atomic_file.h"
#include "platform/xml_text.h"

namespace brindle {
namespace {

std::string absolute_variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? std::string(value) : std::string();
}

std::string without_trailing_slashes(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
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

// The string under a key of the dictionary at the top of an XML property list; empty when there is none.
std::string string_in_property_list(const std::string& path, std::string_view key) {
  constexpr std::size_t most = std::size_t{1} << 20U;
  std::string content;
  pugi::xml_document document;
  if (read_regular_file(path, most, content) != 0) return {};
  if (!document.load_buffer(content.data(), content.size(), pugi::parse_default | pugi::parse_ws_pcdata_single))
    return {};
  for (const pugi::xml_node child : document.child("plist").child("dict").children("key")) {
    const pugi::xml_node value = child.next_sibling();
    if (child.child_value() == key && std::string_view(value.name()) == "string") return value.child_value();
  }
  return {};
}

}  // namespace

std::string data_home() {
  std::string home = absolute_variable("XDG_DATA_HOME");
  if (!home.empty()) return without_trailing_slashes(home);
  home = absolute_variable("HOME");
  return home.empty() ? home : without_trailing_slashes(home + "/.local/share");
}

std::string getAppPath() {
  const std::string home = data_home();
  return home.empty() ? home : home + "/Tessalon/Brindle4";
}

int make_folders(const std::string& path, unsigned mode) {
  for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
    const int error = make_folder(path.substr(0, slash), mode);
    if (error != 0) return error;
  }
  return make_folder(path, mode);
}

bool createApplicationUsersFolder(std::string_view name, std::string& error) {
  std::string path = getAppPath();
  if (path.empty()) {
    error = "there is no home folder: neither HOME nor XDG_DATA_HOME is set to an absolute path";
    return false;
  }
  if (!name.empty()) path.append("/").append(name);
  const int number = make_folders(path, 0777);
  if (number != 0) error = fmt::format("the folder “{}” cannot be made: {}", path, system_error_text(number));
  return number == 0;
}

std::string default_log_folder() {
  const std::string app_path = getAppPath();
  if (app_path.empty()) return {};
  std::string chosen = string_in_property_list(app_path + "/preferences.plist", "defaultLogFolderPath");
  restore_bytes(chosen);
  return chosen.starts_with('/') ? without_trailing_slashes(chosen) : app_path + "/Logs";
}

}  // namespace brindle
