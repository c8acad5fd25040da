#include "platform/trash.h"

#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string_view>

#include "platform/atomic_file.h"
#include "platform/byte_text.h"
#include "platform/data_folders.h"
#include "platform/folder_handle.h"
#include "platform/move.h"
#include "platform/path.h"
#include "platform/translation.h"

namespace brindle {
namespace {

struct Trash {
  std::string path;  // of the trash folder itself; empty: none
  std::string top;   // paths in its notes are relative to this folder; empty: absolute
};

bool device_of(const std::string& path, dev_t& device) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return false;
  device = status.st_dev;
  return true;
}

// Some of the path may not be there yet: the folder it would be made in decides.
dev_t device_of_nearest(std::string path) {
  dev_t device = 0;
  while (!device_of(path, device) && path.size() > 1) path = split_path(path).folder;
  return device;
}

std::string mount_point_of(std::string folder, dev_t device) {
  while (folder.size() > 1) {
    const std::string above = split_path(folder).folder;
    dev_t other = 0;
    if (!device_of(above, other) || other != device) break;
    folder = above;
  }
  return folder;
}

bool is_own_folder(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::getuid();
}

bool make_own_folder(const std::string& path) {
  return ::mkdir(path.c_str(), 0700) == 0 || is_own_folder(path);
}

// An administrator's common trash counts only with the sticky bit, and never through a link.
bool is_common_trash(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX) != 0;
}

Trash trash_of_disk(const std::string& top) {
  const std::string common = join_path(top, ".Trash");
  const std::string in_common = fmt::format("{}/{}", common, ::getuid());
  if (is_common_trash(common) && make_own_folder(in_common)) return {in_common, top};
  const std::string own = join_path(top, fmt::format(".Trash-{}", ::getuid()));
  return make_own_folder(own) ? Trash{own, top} : Trash{};
}

Trash trash_for(const std::string& folder) {
  dev_t device = 0;
  if (!device_of(folder, device)) return {};
  const std::string home = data_home();
  if (!home.empty() && device_of_nearest(home + "/Trash") == device) {
    return make_folders(home + "/Trash", 0700).ok() ? Trash{home + "/Trash", ""} : Trash{};
  }
  return trash_of_disk(mount_point_of(folder, device));
}

std::string note_text(const Trash& trash, const std::string& path) {
  const std::size_t skipped = trash.top.empty() ? 0 : trash.top == "/" ? 1 : trash.top.size() + 1;
  std::string text = "[Trash Info]\nPath=";
  append_percent_encoded(std::string_view(path).substr(skipped), text);
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  return text + fmt::format("\nDeletionDate={:%Y-%m-%dT%H:%M:%S}\n", local);
}

// The note is made first: its exclusive creation claims the name.
int move_under_name(const Trash& trash, const std::string& path, const std::string& note, const std::string& name) {
  const std::string note_path = fmt::format("{}/info/{}.trashinfo", trash.path, name);
  int error = write_new_file(note_path, note, 0600);
  if (error != 0) return error;
  const PathParts from = split_path(path);
  const FolderHandle from_folder = FolderHandle::open(from.folder);
  const FolderHandle files = FolderHandle::open(trash.path + "/files");
  error = from_folder && files ? move_exclusively(from_folder, from.name.c_str(), files, name.c_str()) : ENOENT;
  if (error != 0) ::unlink(note_path.c_str());
  return error;
}

// Name, "name.2", …; ".trashinfo" must fit behind it.
std::string numbered(std::string_view name, int number) {
  const std::string_view cut = name.substr(0, 230);
  return number == 1 ? std::string(cut) : fmt::format("{}.{}", cut, number);
}

Status failure(int error) {
  return Status(translated(system_error_text(error)), error);
}

}  // namespace

Status move_to_trash(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> folder(::realpath(split_path(path).folder.c_str(), nullptr),
                                                           &std::free);
  if (folder == nullptr) return failure(errno);
  const std::string name = split_path(path).name;
  const std::string real_path = join_path(folder.get(), name);
  const Trash trash = trash_for(folder.get());
  const bool is_ready = !trash.path.empty() && make_folders(trash.path + "/info", 0700).ok() &&
                        make_folders(trash.path + "/files", 0700).ok();
  if (!is_ready) return failure(ENOTSUP);
  const std::string note = note_text(trash, real_path);
  constexpr int most_tries = 10'000;
  int error = EEXIST;
  for (int number = 1; error == EEXIST && number <= most_tries; ++number) {
    error = move_under_name(trash, real_path, note, numbered(name, number));
  }
  return error == 0 ? Status() : failure(error);
}

}  // namespace brindle
