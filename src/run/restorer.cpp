#include "run/restorer.h"

#include <cerrno>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/mounts.h"
#include "platform/move.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

constexpr std::string_view source_taken = "another file has its old name";
constexpr std::string_view target_gone = "it is no longer there";
constexpr std::string_view source_folder_gone = "the folder it was in is no longer there";
constexpr std::string_view disk_missing = "the disk it is on is not mounted";
constexpr std::string_view link_in_the_way = "a symbolic link stands in the way to it";

bool are_one_folder(const FolderHandle& a, const FolderHandle& b) {
  FolderStamp first;
  FolderStamp second;
  return a.stamp(first) && b.stamp(second) && first.device == second.device && first.inode == second.inode;
}

}  // namespace

const FolderHandle& Restorer::open(HeldFolder& held, std::string_view path) {
  if (held.path == path && held.handle) return held.handle;
  if (std::exchange(held.has_changed, false)) disks_.keep(std::move(held.handle));
  held.path = path;
  held.handle = FolderHandle::open_real(held.path);
  return held.handle;
}

const FolderHandle& Restorer::find(HeldFolder& held, std::string_view logged, std::size_t number) {
  const FolderHandle& handle = open(held, logged);
  if (handle || handle.error() != ENOENT) return handle;
  const std::string place = places_.place_of(logged, number);
  return place == logged ? handle : open(held, place);
}

std::string_view Restorer::describe(int error, std::string_view folder, std::string_view when_missing) {
  if (error == ENOENT) return lies_on_missing_disk(std::string(folder)) ? disk_missing : when_missing;
  if (error == ELOOP) return link_in_the_way;
  text_ = system_error_text(error);
  return text_;
}

std::string_view Restorer::restore(const LogEntry& entry, std::size_t number, MoveWatcher& watcher) {
  const FolderHandle& target = find(targets_, entry.target_folder, number);
  if (!target) return describe(target.error(), entry.target_folder, target_gone);
  const FolderHandle& source = find(sources_, entry.source_folder, number);
  if (!source) return describe(source.error(), entry.source_folder, source_folder_gone);
  if (own_folders_.may_hang_on(entry.target_name, 0) && own_folders_.hang_on(target, entry.target_name.data()))
    return holds_own_data;
  int error = move_exclusively(target, entry.target_name.data(), source, entry.source_name.data(), &watcher);
  // After another undo, two names of one file, or none, may be an interrupted move whose mark was lost.
  if ((error == EEXIST || error == ENOENT) && was_tried_before_ && may_move_in_two_steps(source) &&
      !differ_in_case_only(entry.target_name, entry.source_name)) {
    settle_half_step(entry, number);
    error = move_exclusively(target, entry.target_name.data(), source, entry.source_name.data(), &watcher);
  }
  if (error == EEXIST && are_one_folder(target, source)) {
    error = move_changing_case(target, entry.target_name.data(), entry.source_name.data());
  }
  if (error == EEXIST) return source_taken;
  if (error != 0) return describe(error, entry.target_folder, target_gone);
  sources_.has_changed = true;
  return {};
}

bool Restorer::settle_half_step(const LogEntry& entry, std::size_t number) {
  const FolderHandle& target = find(targets_, entry.target_folder, number);
  const FolderHandle& source = find(sources_, entry.source_folder, number);
  return target && source &&
         settle_two_step_move(target, entry.target_name.data(), source, entry.source_name.data(), 0) ==
             SettledMove::moved;
}

Restorer::Names Restorer::look(const LogEntry& entry, std::size_t number) {
  const FolderHandle& source = find(sources_, entry.source_folder, number);
  const FolderHandle& target = find(targets_, entry.target_folder, number);
  if (!source || !target) return {};
  return {source.exists(entry.source_name.data()), target.exists(entry.target_name.data())};
}

bool Restorer::is_back(const LogEntry& entry, std::size_t number) {
  const Names names = look(entry, number);
  return names.old_name && (!names.new_name || places_.gave_up_its_new_name(number));
}

bool Restorer::is_forth(const LogEntry& entry, std::size_t number) {
  const Names names = look(entry, number);
  return names.new_name && !names.old_name;
}

int Restorer::sync() {
  if (std::exchange(sources_.has_changed, false)) disks_.keep(std::move(sources_.handle));
  return disks_.sync();
}

}  // namespace brindle
