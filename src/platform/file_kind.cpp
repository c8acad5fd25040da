#include "platform/file_kind.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>

#include "platform/ascii.h"

namespace brindle {
namespace {

// Bundles as they are met on disks shared with macOS, in lower case and sorted.
constexpr std::array<std::string_view, 38> package_extensions = {
    "action",    "app",      "appex",       "aplibrary",    "band",          "bundle",        "component",
    "download",  "dsym",     "framework",   "fcpbundle",    "garageband",    "imovielibrary", "key",
    "kext",      "logicx",   "lrdata",      "mdimporter",   "menu",          "mpkg",          "musiclibrary",
    "nib",       "numbers",  "pages",       "photolibrary", "photoslibrary", "pkg",           "playground",
    "plugin",    "prefpane", "qlgenerator", "rtfd",         "saver",         "service",       "sparsebundle",
    "tvlibrary", "workflow", "xcodeproj"};

}  // namespace

bool is_package_name(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return false;
  const std::string_view extension = name.substr(dot + 1);
  return std::any_of(package_extensions.begin(), package_extensions.end(),
                     [extension](std::string_view known) { return equal_ignoring_case(extension, known); });
}

FileKind file_kind(const FolderHandle& folder, const char* name) {
  FileKind kind;
  struct stat status {};
  if (::fstatat(folder.descriptor(), name, &status, AT_SYMLINK_NOFOLLOW) != 0) return kind;
  kind.exists = true;
  kind.inode = status.st_ino;
  kind.is_alias = S_ISLNK(status.st_mode);
  if (kind.is_alias && ::fstatat(folder.descriptor(), name, &status, 0) != 0) return kind;  // a dangling link
  kind.is_folder = S_ISDIR(status.st_mode);
  kind.is_package = kind.is_folder && is_package_name(name);
  return kind;
}

}  // namespace brindle
