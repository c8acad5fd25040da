#include "run/name_cycle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <numeric>

#include "support/temp_tree.h"

namespace brindle {
namespace {

using test::TempTree;
using Means = NameCycle::Means;

constexpr const char* swap_name = ".brindle-0-0.swap";
constexpr Means all_means[] = {Means::exchange, Means::moves_only, Means::moves_and_names_only};

struct Killed {};

/// A folder with a cycle in it, and the marks that a process leaves.
class Ring {
 public:
  explicit Ring(std::size_t count, bool folders = false) : marks(count, JournalMark::none) {
    for (std::size_t i = 0; i < count; ++i) names.push_back("name " + std::to_string(i));
    for (const std::string& name : names) tree.make({folders ? name + "/in " + name : name});
    folder = FolderHandle::open(tree.path());
    old_inodes = inodes();
    for (std::size_t i = 0; i < count; ++i) new_inodes[names[(i + 1) % count]] = old_inodes.at(names[i]);
  }

  NameCycle cycle(Means means, NameCycle::Marks then = {}) {
    std::vector<CycleMember> members;
    for (std::size_t i = 0; i < names.size(); ++i)
      members.push_back({names[i].c_str(), names[(i + 1) % names.size()].c_str(), old_inodes.at(names[i])});
    return NameCycle(
        folder, std::move(members), swap_name,
        [this, then](std::size_t member, JournalMark mark) {
          if (then) then(member, mark);
          marks[member] = mark;
        },
        means);
  }

  CycleTraces traces() const {
    CycleTraces traces;
    traces.all_but_first_moved =
        std::all_of(marks.begin() + 1, marks.end(), [](JournalMark mark) { return mark == JournalMark::done; });
    traces.none_begun = std::ranges::all_of(marks, [](JournalMark mark) { return mark == JournalMark::none; });
    const auto half = std::ranges::find(marks, JournalMark::half);
    if (half != marks.end()) traces.half = static_cast<std::size_t>(half - marks.begin());
    return traces;
  }

  /// What stands directly in the folder.
  std::map<std::string, std::uint64_t> inodes() const {
    auto found = tree.inodes();
    std::erase_if(found, [](const auto& entry) { return entry.first.find('/') != std::string::npos; });
    return found;
  }

  TempTree tree;
  FolderHandle folder;
  std::vector<std::string> names;
  std::vector<JournalMark> marks;
  std::map<std::string, std::uint64_t> old_inodes;
  std::map<std::string, std::uint64_t> new_inodes;
};

TEST(NameCycle, GivesEachMemberTheNameOfTheNext) {
  for (const Means means : all_means) {
    for (const std::size_t count : {2U, 3U, 7U, 1000U}) {
      Ring ring(count, count == 3);
      NameCycle cycle = ring.cycle(means);
      EXPECT_EQ(cycle.carry_out(), 0);
      EXPECT_TRUE(cycle.is_at(CycleGoal::new_names) && cycle.all_are_there());
      EXPECT_EQ(ring.inodes(), ring.new_inodes);
      EXPECT_TRUE(std::ranges::all_of(ring.marks, [](JournalMark mark) { return mark == JournalMark::done; }));
      EXPECT_EQ(cycle.bring(CycleGoal::old_names), 0);
      EXPECT_EQ(ring.inodes().size(), count);
      EXPECT_EQ(ring.tree.inodes().at(ring.names[0]), ring.old_inodes.at(ring.names[0]));
    }
  }
}

// Killed before and after each move, and whoever cleans up after that is killed as well.
TEST(NameCycle, IsBroughtHomeOrToItsEndFromWhereverItWasStopped) {
  for (const Means means : all_means) {
    for (const CycleGoal goal : {CycleGoal::old_names, CycleGoal::new_names}) {
      for (int stop = 0, stops = 1; stop < stops; ++stop) {
        for (int second_stop = 0, second_stops = 1; second_stop < second_stops; ++second_stop) {
          SCOPED_TRACE(testing::Message() << int(means) << " " << int(goal) << " " << stop << " " << second_stop);
          Ring ring(4);
          int marks = 0;
          int limit = stop;
          const auto kill = [&](std::size_t, JournalMark) {
            if (marks++ == limit) throw Killed();
          };
          bool killed = false;
          try {
            EXPECT_EQ(ring.cycle(means, kill).carry_out(), 0);
          } catch (const Killed&) {
            killed = true;
          }
          if (!killed) break;
          stops = stop + 2;
          marks = 0;
          limit = second_stop;
          try {
            NameCycle cycle = ring.cycle(means, kill);
            ASSERT_TRUE(cycle.find_out(ring.traces()));
            EXPECT_EQ(cycle.bring(goal), 0);
          } catch (const Killed&) {
            second_stops = second_stop + 2;
          }
          NameCycle cycle = ring.cycle(means);
          ASSERT_TRUE(cycle.find_out(ring.traces()));
          EXPECT_EQ(cycle.bring(goal), 0);
          EXPECT_TRUE(cycle.is_at(goal) && cycle.all_are_there());
          EXPECT_EQ(ring.inodes(), goal == CycleGoal::old_names ? ring.old_inodes : ring.new_inodes);
        }
      }
    }
  }
}

TEST(NameCycle, BringsHomeMembersWhoeverStandsWhereAndTouchesNobodyElse) {
  // Which member has which of the four names and the reserved one; 4 is nobody, 5 a stranger.
  std::vector<int> places = {0, 1, 2, 3, 4};
  do {
    for (const Means means : {Means::exchange, Means::moves_only}) {
      for (const bool with_stranger : {false, true}) {
        Ring ring(4);
        const auto path = [&](std::size_t place) { return ring.tree / (place == 4 ? swap_name : ring.names[place]); };
        for (std::size_t i = 0; i < 4; ++i)
          std::filesystem::rename(path(i), ring.tree / ("aside " + std::to_string(i)));
        for (std::size_t place = 0; place < 5; ++place) {
          if (places[place] < 4)
            std::filesystem::rename(ring.tree / ("aside " + std::to_string(places[place])), path(place));
          else if (with_stranger)
            ring.tree.make({place == 4 ? swap_name : ring.names[place]});
        }
        const auto before = ring.inodes();
        NameCycle cycle = ring.cycle(means);
        ASSERT_TRUE(cycle.find_out({}));
        const int error = cycle.bring(CycleGoal::old_names);
        auto after = ring.inodes();
        if (!with_stranger) {
          EXPECT_EQ(error, 0);
          EXPECT_EQ(after, ring.old_inodes);
          continue;
        }
        EXPECT_EQ(after.size(), before.size()) << "nothing comes and nothing goes";
        for (std::size_t place = 0; place < 5; ++place) {
          const std::string name = place == 4 ? swap_name : ring.names[place];
          if (places[place] != 4) continue;
          EXPECT_EQ(after.at(name), before.at(name)) << "the stranger stays";
        }
        for (std::size_t i = 0; i < 4; ++i) {
          if (!cycle.is_there(i)) continue;
          EXPECT_EQ(after.at(cycle.present_name(i)), ring.old_inodes.at(ring.names[i]));
          EXPECT_TRUE(error != 0 || cycle.is_at(CycleGoal::old_names, i));
        }
      }
    }
  } while (std::ranges::next_permutation(places).found);
}

TEST(NameCycle, GoesBackWhenAMemberCannotGo) {
  struct Case {
    const char* what;
    std::function<void(Ring&)> happens;  // before the third mark
    int error;
    bool stays;  // whether every file is left under its old name
  };
  const Case cases[] = {
      {"gone", [](Ring& ring) { std::filesystem::remove(ring.tree / ring.names[3]); }, ENOENT, false},
      {"replaced",
       [](Ring& ring) {
         ring.tree.make({"saved anew"});
         std::filesystem::rename(ring.tree / "saved anew", ring.tree / ring.names[3]);
       },
       another_stands_there, false},
  };
  for (const Case& test : cases) {
    for (const Means means : {Means::exchange, Means::moves_only}) {
      Ring ring(5);
      int marks = 0;
      NameCycle cycle = ring.cycle(means, [&](std::size_t, JournalMark) {
        if (++marks == 3) test.happens(ring);
      });
      const int error = cycle.carry_out();
      // What goes first may have gone already.
      if (error == 0) continue;
      EXPECT_TRUE(error == test.error || error == ENOENT) << test.what << error;
      auto inodes = ring.inodes();
      for (const std::size_t member : {0U, 1U, 2U, 4U})
        EXPECT_EQ(inodes[ring.names[member]], ring.old_inodes[ring.names[member]]) << test.what << int(means) << member;
      EXPECT_FALSE(inodes.contains(swap_name));
    }
  }
}

TEST(NameCycle, IsNotBegunWhenAMemberIsNotTheListedOne) {
  Ring ring(3);
  const std::string stranger = ring.names[1];
  std::filesystem::rename(ring.tree / stranger, ring.tree / "elsewhere");
  EXPECT_EQ(ring.cycle(Means::exchange).carry_out(), ENOENT);
  ring.tree.make({stranger});
  const auto before = ring.inodes();
  NameCycle cycle = ring.cycle(Means::exchange);
  EXPECT_EQ(cycle.carry_out(), another_stands_there);
  EXPECT_EQ(cycle.failed_member(), 1U);
  EXPECT_EQ(ring.inodes(), before);
}

TEST(NameCycle, KeepsEveryNameOfHardLinks) {
  for (const Means means : all_means) {
    for (const std::size_t other : {1U, 2U}) {
      Ring ring(4);
      std::filesystem::remove(ring.tree / ring.names[other]);
      std::filesystem::create_hard_link(ring.tree / ring.names[0], ring.tree / ring.names[other]);
      ring.old_inodes = ring.inodes();
      const auto before = ring.old_inodes;
      EXPECT_EQ(ring.cycle(means).carry_out(), 0);
      for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(ring.inodes().at(ring.names[(i + 1) % 4]), before.at(ring.names[i])) << int(means);
      NameCycle again = ring.cycle(means);
      ASSERT_TRUE(again.find_out(ring.traces()));
      EXPECT_TRUE(again.is_at(CycleGoal::new_names));
      EXPECT_EQ(again.bring(CycleGoal::old_names), 0);
      EXPECT_EQ(ring.inodes(), before);
    }
  }
}

// A file has two names and a folder an empty one beside it: what a move in two steps is stopped over.
TEST(NameCycle, SettlesMovesThatWereCutOff) {
  for (const bool folders : {false, true}) {
    for (const Means means : {Means::moves_only, Means::moves_and_names_only}) {
      for (std::size_t member = 0; member < 3; ++member) {
        SCOPED_TRACE(testing::Message() << folders << int(means) << member);
        Ring ring(3, folders);
        const auto move = [&](const std::string& from, const std::string& to) {
          std::filesystem::rename(ring.tree / from, ring.tree / to);
        };
        std::string from = ring.names[0];
        std::string to = swap_name;
        if (member > 0) {
          move(ring.names[0], swap_name);
          if (member == 1) move(ring.names[2], ring.names[0]);
          from = ring.names[member];
          to = ring.names[(member + 1) % 3];
          ring.marks = {JournalMark::begun, JournalMark::none, JournalMark::done};
        }
        if (folders)
          ring.tree.make({to + "/"});
        else
          std::filesystem::create_hard_link(ring.tree / from, ring.tree / to);
        ring.marks[member] = JournalMark::half;
        NameCycle cycle = ring.cycle(means);
        ASSERT_TRUE(cycle.find_out(ring.traces()));
        EXPECT_EQ(cycle.bring(CycleGoal::old_names), 0);
        EXPECT_EQ(ring.inodes(), ring.old_inodes);
      }
    }
  }
}

}  // namespace
}  // namespace brindle
