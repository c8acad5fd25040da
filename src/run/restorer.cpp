#include "run/restorer.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/disks.h"
#include "platform/move.h"
#include "platform/path.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

constexpr std::size_t none = SIZE_MAX;

std::string source_of(const LogEntry& entry) {
  return join_path(entry.source_folder, entry.source_name);
}
std::string target_of(const LogEntry& entry) {
  return join_path(entry.target_folder, entry.target_name);
}

template <class Index, class Path>
const Index& filled(Index& index, const LogFile& log, Path path) {
  if (!index.empty()) return index;
  for (std::size_t i = 0; i < log.entries.size(); ++i) {
    if (log.entries[i].fault.empty()) index[path(log.entries[i])].push_back(i);
  }
  return index;
}

// The last of the rising numbers below `limit`; none when there is no such one.
std::size_t last_below(const std::vector<std::size_t>& numbers, std::size_t limit) {
  const auto end = std::ranges::lower_bound(numbers, limit);
  return end == numbers.begin() ? none : *(end - 1);
}

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

const EntryPlaces::Index& EntryPlaces::by_target() {
  return filled(by_target_, log_, target_of);
}
const EntryPlaces::Index& EntryPlaces::by_source() {
  return filled(by_source_, log_, source_of);
}

// As the entry names it, or where folders that have got their old names back have taken it.
std::string EntryPlaces::folder_now(std::string_view folder, std::size_t entry) {
  constexpr int deepest = 64;
  if (!progress_.goes_on() || depth_ == deepest || !may_lead_elsewhere()) return std::string(folder);
  ++depth_;
  std::string place = place_of(folder, entry);
  --depth_;
  return place;
}

bool EntryPlaces::has_old_name(std::size_t entry) {
  return entry_exists(join_path(folder_now(log_.entries[entry].source_folder, entry), log_.entries[entry].source_name));
}
bool EntryPlaces::has_new_name(std::size_t entry) {
  return entry_exists(join_path(folder_now(log_.entries[entry].target_folder, entry), log_.entries[entry].target_name));
}

// Where entries took over each other's names, what stands at the new one may be another's.
bool EntryPlaces::is_back(std::size_t entry) {
  if (const LogCycle* cycle = cycle_around(cycles_, entry)) return is_cycle_back(*cycle);
  const bool is_marked = progress_.get(entry) == UndoMark::restored;
  if (is_marked && !shares_names()) return true;
  if (!has_new_name(entry)) return is_marked || has_old_name(entry);
  return shares_names() && gave_up_its_new_name(entry);
}

// Both names of each are there, before and after; the inodes tell, or where there are none to trust, the marks.
bool EntryPlaces::is_cycle_back(const LogCycle& cycle) {
  const auto known = cycles_back_.find(cycle.first);
  if (known != cycles_back_.end()) return known->second;
  const std::vector<std::uint64_t> inodes = progress_.kept_inodes(cycle.first, cycle.count);
  const LogEntry& first = log_.entries[cycle.first];
  const FolderHandle folder = FolderHandle::open_real(folder_now(first.source_folder, cycle.first));
  const bool by_inode = progress_.end_before() == UndoEnd::open && folder && folder.has_lasting_inodes();
  bool is_back = !inodes.empty();
  for (std::size_t i = 0; i < cycle.count && is_back; ++i) {
    EntryFacts facts;
    is_back = by_inode
                  ? folder.look_up(log_.entries[cycle.first + i].source_name.data(), facts) && facts.inode == inodes[i]
                  : progress_.get(cycle.first + i) == UndoMark::restored;
  }
  cycles_back_.emplace(cycle.first, is_back);
  return is_back;
}

bool EntryPlaces::shares_names() {
  if (!shares_names_) shares_names_ = !cycles_.empty() || take_over_names(log_);
  return *shares_names_;
}

std::string EntryPlaces::place_of(std::string_view folder, std::size_t entry) {
  std::string place(folder);
  for (;;) {
    std::size_t above = none;
    std::size_t above_size = 0;
    for (std::size_t size = place.size(); size != std::string::npos && size > 0; size = place.rfind('/', size - 1)) {
      const auto found = by_target().find(place.substr(0, size));
      const std::size_t last = found == by_target_.end() ? none : last_below(found->second, entry);
      if (last == none || (above != none && last < above) || !is_back(last)) continue;
      above = last;
      above_size = size;
    }
    if (above == none) return place;
    const LogCycle* cycle = cycle_around(cycles_, above);
    entry = cycle != nullptr ? cycle->first : above;  // its members moved all at once
    place = source_of(log_.entries[above]) + place.substr(above_size);
  }
}

// The entry still to come whose old name is this one's new name.
std::size_t EntryPlaces::find_holder(std::size_t entry) {
  const auto found = by_source().find(target_of(log_.entries[entry]));
  return found == by_source_.end() ? none : last_below(found->second, entry);
}

bool EntryPlaces::gave_up_its_new_name(std::size_t entry) {
  enum : std::uint8_t { unknown, yes, no };
  answers_.resize(log_.entries.size());
  std::vector<std::size_t> chain;
  std::uint8_t answer = unknown;
  for (std::size_t at = entry; answer == unknown;) {
    if (at == none || !has_old_name(at)) {
      answer = no;
    } else if (answers_[at] != unknown) {
      answer = answers_[at];
    } else {
      chain.push_back(at);
      if (!has_new_name(at)) answer = yes;
      at = find_holder(at);
    }
  }
  for (const std::size_t at : chain) answers_[at] = answer;
  return answer == yes;
}

bool EntryPlaces::is_another_at_new_name(std::size_t entry) {
  if (!shares_names()) return false;
  const std::size_t holder = find_holder(entry);
  return holder != none && has_old_name(holder) && (!has_new_name(holder) || gave_up_its_new_name(holder));
}

const FolderHandle& Restorer::open(HeldFolder& held, std::string_view path) {
  if (held.path == path && held.handle) return held.handle;
  if (std::exchange(held.has_changed, false)) disks_.keep(std::move(held.handle));
  held.path = path;
  held.handle = FolderHandle::open_real(held.path);
  return held.handle;
}

const FolderHandle& Restorer::find(HeldFolder& held, std::string_view logged, std::size_t number) {
  if (was_tried_before_ && places_.may_lead_elsewhere()) return open(held, places_.place_of(logged, number));
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
  if (holds_own_data(target, entry.target_name)) return brindle::holds_own_data;
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
  return names.new_name && !names.old_name && !places_.is_another_at_new_name(number);
}

const FolderHandle& Restorer::open_to_change(const LogEntry& entry, std::size_t number) {
  const FolderHandle& folder = find(sources_, entry.source_folder, number);
  sources_.has_changed = static_cast<bool>(folder);
  return folder;
}

std::string_view Restorer::describe(int error, const LogEntry& entry) {
  return error == EEXIST ? source_taken : describe(error, entry.target_folder, target_gone);
}

bool Restorer::holds_own_data(const FolderHandle& folder, std::string_view name) const {
  return own_folders_.may_hang_on(name, 0) && own_folders_.hang_on(folder, name.data());
}

int Restorer::sync() {
  if (std::exchange(sources_.has_changed, false)) disks_.keep(std::move(sources_.handle));
  return disks_.sync();
}

}  // namespace brindle
