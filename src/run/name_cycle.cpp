#include "run/name_cycle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <unordered_map>
#include <utility>

namespace brindle {
namespace {

// An exchange leaves the spelling of both names as it is.
bool takes_over_every_name(const std::vector<CycleMember>& members) {
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (std::strcmp(members[i].new_name, members[(i + 1) % members.size()].old_name) != 0) return false;
  }
  return true;
}

}  // namespace

std::string reserved_name(std::uint64_t run, std::size_t number) {
  return fmt::format(".brindle-{:016x}-{}.swap", run, number);
}

NameCycle::NameCycle(const FolderHandle& folder, std::vector<CycleMember> members, std::string reserved, Marks marks,
                     Means means)
    : folder_(folder),
      members_(std::move(members)),
      reserved_(std::move(reserved)),
      marks_(std::move(marks)),
      by_inode_(means != Means::moves_and_names_only && folder.has_lasting_inodes()),
      may_exchange_(by_inode_ && means == Means::exchange && takes_over_every_name(members_)),
      where_(members_.size(), nowhere),
      holders_(members_.size() + 1, empty),
      seen_(members_.size() + 1) {}

NameCycle::Place NameCycle::home(std::size_t member, CycleGoal goal) const {
  const auto old = static_cast<Place>(member);
  if (goal == CycleGoal::old_names) return old;
  return old + 1 == count() ? 0 : old + 1;
}

std::uint32_t NameCycle::owner(Place place) const {
  if (goal_ == CycleGoal::old_names) return place;
  return place == 0 ? count() - 1 : place - 1;
}

const char* NameCycle::name_to_give(std::uint32_t member, Place place) const {
  const bool is_new = place != reserved_place() && goal_ == CycleGoal::new_names;
  return is_new ? members_[member].new_name : name(place);
}

void NameCycle::mark(std::size_t member, JournalMark mark) const {
  if (marks_) marks_(member, mark);
}

void NameCycle::put(std::uint32_t member, Place place) {
  if (where_[member] != nowhere && holders_[where_[member]] == member) holders_[where_[member]] = empty;
  where_[member] = place;
  holders_[place] = member;
}

void NameCycle::arrived(std::uint32_t member) const {
  if (where_[member] != home(member)) return;
  mark(member, goal_ == CycleGoal::new_names ? JournalMark::done : JournalMark::failed);
}

bool NameCycle::is_at(CycleGoal goal) const {
  for (std::size_t member = 0; member < members_.size(); ++member) {
    if (is_there(member) && !is_at(goal, member)) return false;
  }
  return true;
}

bool NameCycle::all_are_there() const {
  return std::ranges::find(where_, nowhere) == where_.end();
}

// Going there and back.

// 0 when the member is what the name leads to.
int NameCycle::look_for(std::uint32_t member, Place place) const {
  EntryFacts facts;
  if (!folder_.look_up(name(place), facts)) return errno;
  return !by_inode_ || facts.inode == members_[member].inode ? 0 : another_stands_there;
}

int NameCycle::check(Place place) {
  const std::uint32_t member = holders_[place];
  const int error = look_for(member, place);
  if (error == 0) return 0;
  at_hand_ = member;
  if (by_inode_ || error == ENOENT) look_again(place);
  return error;
}

// Somebody else has been here.
void NameCycle::look_again(Place place) {
  if (!by_inode_) {
    where_[holders_[place]] = nowhere;
    holders_[place] = empty;
    return;
  }
  look_at_all();
  assign(CycleGoal::old_names);
}

int NameCycle::begin() {
  for (std::uint32_t member = 0; member < count(); ++member) {
    at_hand_ = member;
    EntryFacts facts;
    if (!folder_.look_up(members_[member].old_name, facts)) return errno;
    if (by_inode_ && members_[member].inode != 0 && facts.inode != members_[member].inode) return another_stands_there;
    members_[member].inode = facts.inode;
    put(member, member);
  }
  return 0;
}

int NameCycle::carry_out() {
  const int error = begin();
  return error != 0 ? error : go_there_or_back();
}

int NameCycle::go_there_or_back() {
  const int error = bring(CycleGoal::new_names);
  if (error == 0) return 0;
  const std::size_t failed = at_hand_;
  if (bring(CycleGoal::old_names) != 0) {
    may_exchange_ = false;  // perhaps it goes another way
    static_cast<void>(bring(CycleGoal::old_names));
  }
  at_hand_ = failed;
  return error;
}

// On the way back everybody goes home who can; on the way there one failure is enough.
int NameCycle::bring(CycleGoal goal) {
  goal_ = goal;
  for (std::uint32_t member = 0; member < count(); ++member) arrived(member);  // whose mark may have been lost
  for (Place place = 0; place < count(); ++place) {
    if (const int error = fill(place); error != 0) return error;
  }
  int failure = 0;
  for (std::uint32_t member = 0; member < count(); ++member) {
    if (!is_there(member) || where_[member] == home(member)) continue;
    const int error = turn_ring_of(member);
    if (error != 0 && goal == CycleGoal::new_names) return error;
    if (failure == 0) failure = error;
  }
  return failure;
}

int NameCycle::turn_ring_of(std::uint32_t member) {
  at_hand_ = member;
  if (!is_ring(member)) return EEXIST;
  const int error = may_exchange_ ? turn_by_exchange(member) : ENOTSUP;
  return error == ENOTSUP ? turn_by_moves(member) : error;
}

// From one empty name to the next, as long as somebody wants it.
int NameCycle::fill(Place hole) {
  while (hole != reserved_place() && holders_[hole] == empty && is_there(owner(hole))) {
    const Place from = where_[owner(hole)];
    if (const int error = move(from, hole); error != 0) return error;
    hole = from;
  }
  return 0;
}

// Whether whoever has the name that the member wants wants one that somebody has, and so on round to the member.
bool NameCycle::is_ring(std::uint32_t member) const {
  for (Place place = home(member); place != where_[member]; place = home(holders_[place])) {
    if (holders_[place] == stranger || holders_[place] == empty) return false;
  }
  return true;
}

int NameCycle::turn_by_exchange(std::uint32_t member) {
  const Place pivot = where_[member];
  while (home(holders_[pivot]) != pivot) {
    const int error = exchange(pivot, home(holders_[pivot]));
    if (error == ENOTSUP) may_exchange_ = false;
    if (error != 0) return error;
  }
  return 0;
}

int NameCycle::turn_by_moves(std::uint32_t member) {
  const Place hole = where_[member];
  const int error = move(hole, reserved_place());
  return error != 0 ? error : fill(hole);
}

int NameCycle::move(Place from, Place to) {
  const std::uint32_t member = holders_[from];
  at_hand_ = member;
  if (const int error = check(from); error != 0) return error;
  mark(member, JournalMark::begun);
  const char* new_name = name_to_give(member, to);
  if (const int error = move_exclusively(folder_, name(from), folder_, new_name, this); error != 0) return error;
  put(member, to);
  if (look_for(member, to) != another_stands_there) {
    if (to != home(member)) mark(member, JournalMark::begun);  // it was half perhaps
    arrived(member);
    return 0;
  }
  // Another program has put its file there since the look, and that is what was moved.
  static_cast<void>(move_exclusively(folder_, new_name, folder_, name(from)));
  look_again(to);
  return another_stands_there;
}

int NameCycle::exchange(Place one, Place other) {
  at_hand_ = holders_[one];
  if (const int error = check(one); error != 0) return error;
  if (const int error = check(other); error != 0) return error;
  const std::uint32_t first = holders_[one];
  const std::uint32_t second = holders_[other];
  mark(first, JournalMark::begun);
  mark(second, JournalMark::begun);
  if (const int error = exchange_names(folder_, name(one), name(other)); error != 0) return error;
  if (look_for(first, other) == another_stands_there || look_for(second, one) == another_stands_there) {
    static_cast<void>(exchange_names(folder_, name(one), name(other)));
    look_again(one);
    return another_stands_there;
  }
  put(first, other);
  put(second, one);
  arrived(first);
  arrived(second);
  return 0;
}

// Finding out.

bool NameCycle::find_out(const CycleTraces& traces) {
  may_be_cut_off_ = traces.half != CycleTraces::nobody || may_move_in_two_steps(folder_);
  if (may_be_cut_off_) settle_names_aside_of_all();
  look_at_all();
  if (!by_inode_ && !find_out_by_names(traces)) return false;
  if (by_inode_) find_out_by_inode();
  if (traces.half != CycleTraces::nobody) mark(traces.half, JournalMark::begun);  // settled
  return true;
}

void NameCycle::find_out_by_inode() {
  assign(CycleGoal::new_names);
  if (settle_cut_moves()) assign(CycleGoal::new_names);
  if (!is_at(CycleGoal::new_names)) assign(CycleGoal::old_names);
}

void NameCycle::settle_names_aside_of_all() {
  for (Place place = 0; place <= count(); ++place) settle_names_aside(folder_, name(place), name(place));
}

void NameCycle::look_at_all() {
  for (Place place = 0; place <= count(); ++place) {
    seen_[place].is_there = folder_.look_up(name(place), seen_[place].facts);
  }
}

// Members that are hard links of one file are as good as one another; each gets the place that it would have.
void NameCycle::assign(CycleGoal preferred) {
  std::ranges::fill(where_, nowhere);
  for (Place place = 0; place <= count(); ++place) holders_[place] = seen_[place].is_there ? stranger : empty;
  for (std::uint32_t member = 0; member < count(); ++member) {
    const Place place = home(member, preferred);
    if (holders_[place] == stranger && seen_[place].facts.inode == members_[member].inode) put(member, place);
  }
  std::unordered_multimap<std::uint64_t, Place> others;
  for (Place place = 0; place <= count(); ++place) {
    if (holders_[place] == stranger) others.emplace(seen_[place].facts.inode, place);
  }
  for (std::uint32_t member = 0; member < count(); ++member) {
    if (is_there(member)) continue;
    const auto found = others.find(members_[member].inode);
    if (found == others.end()) continue;
    put(member, found->second);
    others.erase(found);
  }
}

// Whether `lost` is free afterwards.
bool NameCycle::settle_cut_move(Place kept, Place lost, std::uint64_t inode) {
  static_cast<void>(settle_two_step_move(folder_, name(kept), folder_, name(lost), inode));
  seen_[lost].is_there = folder_.look_up(name(lost), seen_[lost].facts);
  return !seen_[lost].is_there;
}

// A second name of a member, or an empty folder made for one to be renamed onto. Somebody has the reserved name then,
// or what looks so is a person's.
bool NameCycle::settle_cut_moves() {
  if (!may_be_cut_off_ || !seen_[reserved_place()].is_there) return false;
  std::unordered_map<std::uint64_t, Place> places;
  for (std::uint32_t member = 0; member < count(); ++member) {
    if (is_there(member)) places.emplace(members_[member].inode, where_[member]);
  }
  bool settled = false;
  for (Place place = 0; place <= count(); ++place) {
    if (holders_[place] != stranger) continue;
    const auto twin = places.find(seen_[place].facts.inode);
    if (twin != places.end()) {
      settled = settle_cut_move(twin->second, place, twin->first) || settled;
    } else if (seen_[place].facts.kind == EntryKind::folder) {
      settled = settle_stand_in(place) || settled;
    }
  }
  return settled;
}

bool NameCycle::settle_stand_in(Place place) {
  const std::uint32_t old_owner = place == reserved_place() ? 0 : place;
  const std::uint32_t new_owner = place == 0 ? count() - 1 : place - 1;
  return std::ranges::any_of(std::array{old_owner, new_owner}, [&](std::uint32_t member) {
    return is_there(member) && settle_cut_move(where_[member], place, members_[member].inode);
  });
}

// Where inodes are made up as they go, the one free name tells all, and where none is free, the marks.

void NameCycle::assign_all(CycleGoal goal) {
  std::ranges::fill(where_, nowhere);
  for (Place place = 0; place <= count(); ++place) holders_[place] = seen_[place].is_there ? stranger : empty;
  for (std::uint32_t member = 0; member < count(); ++member) {
    if (seen_[home(member, goal)].is_there) put(member, home(member, goal));
  }
}

bool NameCycle::fits(CycleGoal goal) const {
  for (std::uint32_t member = 0; member < count(); ++member) {
    const Seen& seen = seen_[home(member, goal)];
    if (!seen.is_there || members_[member].inode == 0 || seen.facts.inode != members_[member].inode) return false;
  }
  return true;
}

// The first member is under the reserved name, and those behind the free one have moved up already.
void NameCycle::assign_around(Place hole) {
  std::ranges::fill(where_, nowhere);
  std::ranges::fill(holders_, empty);
  put(0, reserved_place());
  for (std::uint32_t member = 1; member < count(); ++member) {
    const bool has_moved = hole != 0 && member >= hole;
    put(member, home(member, has_moved ? CycleGoal::new_names : CycleGoal::old_names));
  }
}

bool NameCycle::find_out_by_names(const CycleTraces& traces) {
  const auto is_free = [](const Seen& seen) { return !seen.is_there; };
  const std::span<const Seen> names = std::span(seen_).first(count());
  const auto is_under_way = [&] { return seen_[reserved_place()].is_there; };
  if (is_under_way() && std::ranges::none_of(names, is_free)) {
    if (!settle_half(traces)) return false;
    look_at_all();
  }
  if (!is_under_way()) {
    const bool has_moved = traces.none_begun ? fits(CycleGoal::new_names) : traces.all_but_first_moved;
    assign_all(has_moved ? CycleGoal::new_names : CycleGoal::old_names);
    return true;
  }
  if (std::ranges::count_if(names, is_free) != 1) return false;
  assign_around(static_cast<Place>(std::ranges::find_if(names, is_free) - names.begin()));
  return true;
}

// Every name is there: one of two is the second one of a member, or an empty folder in its place. Which two these are,
// the mark says, and where it was lost, the one file that they lead to.
bool NameCycle::settle_half(const CycleTraces& traces) {
  const Place first_from = traces.all_but_first_moved ? 1 : 0;
  std::size_t candidates = 0;
  std::uint32_t found = 0;
  const auto from = [&](std::uint32_t member) { return member == 0 ? first_from : member; };
  const auto to = [&](std::uint32_t member) {
    return member == 0 ? reserved_place() : home(member, CycleGoal::new_names);
  };
  for (std::uint32_t member = 0; member < count(); ++member) {
    const bool is_one_file = seen_[from(member)].facts.inode == seen_[to(member)].facts.inode;
    if (traces.half == CycleTraces::nobody ? !is_one_file : traces.half != member) continue;
    ++candidates;
    found = member;
  }
  if (candidates != 1) return false;
  return settle_cut_move(from(found), to(found), members_[found].inode) ||
         settle_cut_move(to(found), from(found), members_[found].inode);
}

}  // namespace brindle
