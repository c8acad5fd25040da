#pragma once

// Entries of one folder that pass their names round: member i gets the name of member i + 1, the last that of the
// first. All of them get their new names, or all keep their old ones; and whoever was stopped in between can find out
// who is where and go on. One thread an object.
//
// Where the disk can, two names are exchanged at a time, and no other name is used. Where it cannot, the first member
// goes to a reserved name, the others follow one after the other, and it goes from there to its new name: at any moment
// one name is free, and which one tells how far the round has got, also where inodes tell nothing.

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "log/journal.h"
#include "platform/folder_handle.h"
#include "platform/move.h"

namespace brindle {

/// Names are NUL-terminated and outlive the cycle. On a disk that ignores letter case the new name may be spelled
/// otherwise than the name that it takes over.
struct CycleMember {
  const char* old_name = nullptr;
  const char* new_name = nullptr;
  std::uint64_t inode = 0;  ///< as it was listed; 0 when not known
};

enum class CycleGoal : std::uint8_t { old_names, new_names };

/// Stands beside errno: another file has come to stand where a member was.
inline constexpr int another_stands_there = EBADFD;
/// Stands beside errno: not this member, but another one of its cycle, cannot be renamed.
inline constexpr int another_of_cycle_failed = ECANCELED;

/// What the marks that a stopped process left say of a cycle.
struct CycleTraces {
  static constexpr std::size_t nobody = SIZE_MAX;
  bool all_but_first_moved = false;  ///< every member but the first is marked as renamed
  bool none_begun = true;            ///< no member is marked at all
  std::size_t half = nobody;         ///< the member that is being moved in two steps
};

/// A name of our own, which the cycle number `number` of a run (or of an undo) may use meanwhile.
std::string reserved_name(std::uint64_t run, std::size_t number);

class NameCycle final : private MoveWatcher {
 public:
  /// Hears of each member's mark, before and after it is moved: begun, half, done (new name) or failed (old name).
  using Marks = std::function<void(std::size_t member, JournalMark mark)>;
  /// What may be relied on: all that the disk has, but in tests.
  enum class Means : std::uint8_t { exchange, moves_only, moves_and_names_only };

  /// At least two members. `reserved` is a name of our own; nothing has it as long as nothing was begun.
  NameCycle(const FolderHandle& folder, std::vector<CycleMember> members, std::string reserved, Marks marks = {},
            Means means = Means::exchange);

  /// A cycle that nobody has touched: looks whether each member is the one that was listed. 0, or the errno of member
  /// failed_member(). The inodes of members() are known afterwards.
  [[nodiscard]] int begin();
  /// The whole of it: begin(), new names, and back to the old ones when that fails. 0, or why not; then
  /// is_at(old_names) unless even the way back failed.
  [[nodiscard]] int carry_out();
  /// The same behind begin() or find_out().
  [[nodiscard]] int go_there_or_back();

  /// Looks where the members are that somebody was stopped over, and settles moves that were cut off. False when the
  /// disk does not tell.
  [[nodiscard]] bool find_out(const CycleTraces& traces);
  /// Gives every member that is there its name, wherever they are; an entry that is none of them is not touched. 0 or
  /// errno. May be cut off anywhere, and done again after find_out().
  [[nodiscard]] int bring(CycleGoal goal);

  /// Whether the members that are there have these names.
  bool is_at(CycleGoal goal) const;
  bool is_at(CycleGoal goal, std::size_t member) const { return where_[member] == home(member, goal); }
  bool is_there(std::size_t member) const { return where_[member] != nowhere; }
  bool all_are_there() const;

  const std::vector<CycleMember>& members() const { return members_; }
  /// Whose turn it was when something failed.
  std::size_t failed_member() const { return at_hand_; }
  /// The name under which a member is now.
  const char* present_name(std::size_t member) const { return name(where_[member]); }

 private:
  // Places are the members' old names, by their numbers, and behind them the reserved name.
  using Place = std::uint32_t;
  static constexpr std::uint32_t nowhere = UINT32_MAX;       // of a member
  static constexpr std::uint32_t empty = UINT32_MAX;         // of a place: nothing has the name
  static constexpr std::uint32_t stranger = UINT32_MAX - 1;  // of a place: none of the members has it

  std::uint32_t count() const { return static_cast<std::uint32_t>(members_.size()); }
  Place reserved_place() const { return count(); }
  const char* name(Place place) const {
    return place == reserved_place() ? reserved_.c_str() : members_[place].old_name;
  }
  Place home(std::size_t member, CycleGoal goal) const;
  Place home(std::size_t member) const { return home(member, goal_); }
  std::uint32_t owner(Place place) const;
  const char* name_to_give(std::uint32_t member, Place place) const;
  void half_step() noexcept override { mark(at_hand_, JournalMark::half); }
  void mark(std::size_t member, JournalMark mark) const;
  void put(std::uint32_t member, Place place);
  void arrived(std::uint32_t member) const;

  int look_for(std::uint32_t member, Place place) const;
  int check(Place place);
  void look_again(Place place);
  int move(Place from, Place to);
  int exchange(Place one, Place other);
  int fill(Place hole);
  bool is_ring(std::uint32_t member) const;
  int turn_ring_of(std::uint32_t member);
  int turn_by_exchange(std::uint32_t member);
  int turn_by_moves(std::uint32_t member);

  struct Seen {
    bool is_there = false;
    EntryFacts facts;
  };
  void look_at_all();
  void settle_names_aside_of_all();
  void assign(CycleGoal preferred);
  bool settle_cut_moves();
  bool settle_cut_move(Place kept, Place lost, std::uint64_t inode);
  bool settle_stand_in(Place place);
  void find_out_by_inode();
  bool find_out_by_names(const CycleTraces& traces);
  void assign_around(Place hole);
  void assign_all(CycleGoal goal);
  bool fits(CycleGoal goal) const;
  bool settle_half(const CycleTraces& traces);

  const FolderHandle& folder_;
  std::vector<CycleMember> members_;
  std::string reserved_;
  Marks marks_;
  bool by_inode_;
  bool may_be_cut_off_ = false;  // a move in two steps
  bool may_exchange_;
  CycleGoal goal_ = CycleGoal::old_names;
  std::size_t at_hand_ = 0;
  std::vector<Place> where_;            // by member
  std::vector<std::uint32_t> holders_;  // by place
  std::vector<Seen> seen_;              // by place
};

}  // namespace brindle
