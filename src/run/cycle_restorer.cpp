#include "run/cycle_restorer.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <utility>

#include "platform/atomic_file.h"
#include "platform/own_folders.h"
#include "platform/translation.h"
#include "run/rename_row.h"

namespace brindle {
namespace {

constexpr std::string_view nothing_kept =
    to_translate("there is no room to write down how far it gets, which its names cannot be given back without");
constexpr std::string_view cannot_tell = to_translate("the disk does not tell which of the items it is");

constexpr int not_written_down = ENOMEDIUM;  // stands beside errno

UndoMark undo_mark(JournalMark mark) {
  switch (mark) {
    case JournalMark::done:
      return UndoMark::restored;
    case JournalMark::failed:
      return UndoMark::left;
    case JournalMark::half:
      return UndoMark::half;
    default:
      return UndoMark::begun;
  }
}

}  // namespace

// The undo goes backwards: the last entry's item goes from the first name to the last one.
std::vector<CycleMember> CycleRestorer::members(const LogCycle& cycle, bool goes_on) const {
  std::vector<std::uint64_t> inodes(cycle.count);
  if (goes_on) inodes = progress_.kept_inodes(cycle.first, cycle.count);
  std::vector<CycleMember> members;
  members.reserve(cycle.count);
  for (std::size_t i = cycle.count; i > 0; --i) {
    const LogEntry& entry = log_.entries[cycle.first + i - 1];
    members.push_back({entry.target_name.data(), entry.source_name.data(), inodes[i - 1]});
  }
  return members;
}

// On a disk that ignores letter case, a name in other letters leads to the same item.
bool CycleRestorer::is_one(const LogCycle& cycle, const FolderHandle& folder) const {
  for (std::size_t i = 0; i < cycle.count; ++i) {
    const LogEntry& entry = log_.entries[cycle.first + i];
    const LogEntry& next = log_.entries[cycle.first + (i + 1) % cycle.count];
    EntryFacts one;
    EntryFacts other;
    if (entry.target_name == next.source_name) continue;
    if (!folder.look_up(entry.target_name.data(), one) || !folder.look_up(next.source_name.data(), other)) return false;
    if (one.inode != other.inode || one.device != other.device) return false;
  }
  return true;
}

bool CycleRestorer::all_marked(const LogCycle& cycle, UndoMark mark) const {
  for (std::size_t i = 0; i < cycle.count; ++i) {
    if (progress_.get(cycle.first + i) != mark) return false;
  }
  return true;
}

// Whether an undo before this one may have been stopped over it: then that one's notes count, and the disk.
bool CycleRestorer::is_to_go_on(const LogCycle& cycle) const {
  if (!progress_.goes_on() || progress_.kept_inodes(cycle.first, cycle.count).empty()) return false;
  return progress_.end_before() == UndoEnd::open ||
         !(all_marked(cycle, UndoMark::left) || all_marked(cycle, UndoMark::none));
}

CycleTraces CycleRestorer::traces(const LogCycle& cycle) const {
  CycleTraces traces;
  traces.none_begun = all_marked(cycle, UndoMark::none);
  traces.all_but_first_moved = true;
  for (std::size_t member = 0; member < cycle.count; ++member) {
    const UndoMark mark = progress_.get(cycle.first + cycle.count - 1 - member);
    if (member > 0 && mark != UndoMark::restored) traces.all_but_first_moved = false;
    if (mark == UndoMark::half) traces.half = member;
  }
  return traces;
}

bool CycleRestorer::is_written_down(std::size_t first, const std::vector<std::uint64_t>& inodes) const {
  if (first < written_from_ || first + inodes.size() > written_from_ + written_.size()) return false;
  return std::equal(inodes.begin(), inodes.end(),
                    written_.begin() + static_cast<std::ptrdiff_t>(first - written_from_));
}

// Nobody can tell later who was who unless it is written down now. Writing takes the disk a while, so the cycles that
// come next in the folder are written down as well.
bool CycleRestorer::write_down(const LogCycle& cycle, const FolderHandle& folder) {
  constexpr std::size_t most = 8192;
  const auto inodes_of = [&](std::size_t first, std::size_t count) {
    std::vector<std::uint64_t> inodes;
    inodes.reserve(count);
    for (std::size_t i = first; i < first + count; ++i) {
      EntryFacts facts;
      inodes.push_back(folder.look_up(log_.entries[i].target_name.data(), facts) ? facts.inode : 0);
    }
    return inodes;
  };
  if (is_written_down(cycle.first, inodes_of(cycle.first, cycle.count))) return true;
  const std::size_t end = cycle.first + cycle.count;
  written_from_ = cycle.first;
  auto ahead = std::ranges::lower_bound(cycles_, cycle.first, {}, &LogCycle::first);
  while (ahead != cycles_.begin() && end - written_from_ < most) {
    --ahead;
    const bool is_next = ahead->first + ahead->count == written_from_ &&
                         log_.entries[ahead->first].source_folder == log_.entries[cycle.first].source_folder;
    if (!is_next) break;
    written_from_ = ahead->first;
  }
  written_ = inodes_of(written_from_, end - written_from_);
  return progress_.keep_inodes(written_from_, written_) == 0;
}

CycleRestorer::Outcome CycleRestorer::leave_all(const LogCycle& cycle, std::string_view reason) {
  failed_ = cycle.first;
  reason_ = reason_of_others_ = reason;
  return Outcome::left;
}

CycleRestorer::Outcome CycleRestorer::leave(const LogCycle& cycle, int error, std::size_t failed) {
  if (error == not_written_down) return leave_all(cycle, nothing_kept);
  failed_ = cycle.first + cycle.count - 1 - failed;
  reason_of_others_ = describe_error(another_of_cycle_failed);
  reason_ = error == another_stands_there ? describe_error(error) : restorer_.describe(error, log_.entries[failed_]);
  return Outcome::left;
}

CycleRestorer::Outcome CycleRestorer::restore(const LogCycle& cycle) {
  const LogEntry& first = log_.entries[cycle.first];
  const FolderHandle& folder = restorer_.open_to_change(first, cycle.first);
  if (!folder) return leave_all(cycle, restorer_.describe(folder.error(), first));
  if (!cycle.is_certain && !is_one(cycle, folder)) return Outcome::no_cycle;
  if (progress_.end_before() != UndoEnd::open && all_marked(cycle, UndoMark::restored)) return Outcome::restored;
  for (std::size_t i = 0; i < cycle.count; ++i) {
    const std::string_view name = log_.entries[cycle.first + i].target_name;
    if (restorer_.holds_own_data(folder, name)) return leave_all(cycle, holds_own_data);
  }
  return is_to_go_on(cycle) ? go_on(cycle, folder) : start(cycle, folder);
}

NameCycle CycleRestorer::names_of(const LogCycle& cycle, const FolderHandle& folder, bool goes_on) {
  const auto mark = [this, cycle](std::size_t member, JournalMark now) {
    progress_.set(cycle.first + cycle.count - 1 - member, undo_mark(now));
  };
  return {folder, members(cycle, goes_on), reserved_name(log_.checksum, cycle.first), mark};
}

// The undo goes backwards: those before it were not begun, and those behind it are done.
void CycleRestorer::finish_stopped() {
  if (!progress_.goes_on() || progress_.end_before() != UndoEnd::open) return;
  for (const LogCycle& cycle : cycles_) {
    if (!is_to_go_on(cycle)) continue;
    const FolderHandle& folder = restorer_.open_to_change(log_.entries[cycle.first], cycle.first);
    if (!folder) return;
    NameCycle names = names_of(cycle, folder, true);
    if (!names.find_out(traces(cycle)) || names.is_at(CycleGoal::new_names)) return;
    if (names.is_at(CycleGoal::old_names)) continue;
    static_cast<void>(names.go_there_or_back());  // what fails is told when its turn comes
    return;
  }
}

CycleRestorer::Outcome CycleRestorer::start(const LogCycle& cycle, const FolderHandle& folder) {
  NameCycle names = names_of(cycle, folder, false);
  int error = names.begin();
  if (error == 0 && !write_down(cycle, folder)) error = not_written_down;
  if (error == 0) error = names.go_there_or_back();
  if (error == 0) return Outcome::moved;
  for (std::size_t i = 0; i < cycle.count && names.is_at(CycleGoal::old_names); ++i) {
    progress_.set(cycle.first + i, UndoMark::left);
  }
  return leave(cycle, error, names.failed_member());
}

CycleRestorer::Outcome CycleRestorer::go_on(const LogCycle& cycle, const FolderHandle& folder) {
  const bool was_restored = all_marked(cycle, UndoMark::restored);
  const CycleTraces found = traces(cycle);
  NameCycle names = names_of(cycle, folder, true);
  if (!names.find_out(found)) return leave_all(cycle, cannot_tell);
  if (names.is_at(CycleGoal::new_names) && (names.all_are_there() || was_restored)) {
    for (std::size_t i = 0; i < cycle.count; ++i) progress_.set(cycle.first + i, UndoMark::restored);
    return Outcome::restored;
  }
  if (names.all_are_there()) {
    const int error = names.go_there_or_back();
    return error == 0 ? Outcome::moved : leave(cycle, error, names.failed_member());
  }
  // Written down and not begun, and one was saved anew since.
  if (found.none_begun && names.is_at(CycleGoal::old_names)) return start(cycle, folder);
  // One has been taken away since; the others stay together.
  static_cast<void>(names.bring(CycleGoal::old_names));
  std::size_t missing = 0;
  while (missing + 1 < cycle.count && names.is_there(missing)) ++missing;
  return leave(cycle, ENOENT, missing);
}

}  // namespace brindle
