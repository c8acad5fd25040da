#include "run/run_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <random>

#include "platform/file_name.h"

namespace brindle {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;  // names, and the names that they are to get

class RunOrderOf {
 public:
  explicit RunOrderOf(const Pairs& pairs, bool ignores_case = false) {
    FileSystemItem item;
    for (const auto& [path, proposed] : pairs) {
      const std::size_t slash = path.rfind('/');
      files_.add(files_.folders().intern("/" + path.substr(0, slash + 1)), path.substr(slash + 1), 0, 0);
      files_.read(files_.size() - 1, item);
      item.setNewFilename(decode_file_name(proposed));
      files_.write(files_.size() - 1, item, 255);
    }
    std::vector<std::uint32_t> rows(files_.size());
    std::iota(rows.begin(), rows.end(), 0);
    order_ = order_of_run(files_, rows, [&](FolderId, const char*, const char*) { return ignores_case; });
  }

  /// As "0 (1 2) 3": the rows in their order, cycles in brackets.
  std::string text() const {
    std::string text;
    for (std::uint32_t place = 0; place < order_.rows.size(); ++place) {
      const RowCycle* cycle = cycle_around(place);
      if (!text.empty()) text += ' ';
      if (cycle != nullptr && place == cycle->first) text += '(';
      text += std::to_string(order_.rows[place]);
      if (cycle != nullptr && place + 1 == cycle->first + cycle->count) text += ')';
    }
    return text;
  }

  /// Carries the order out on a folder of names; the rows that found theirs taken.
  std::vector<std::uint32_t> failures() const {
    std::map<std::pair<FolderId, std::string>, std::uint32_t> disk;
    for (std::uint32_t row = 0; row < files_.size(); ++row)
      disk[{files_[row].folder, std::string(files_[row].name())}] = row;
    std::vector<std::uint32_t> failed;
    for (std::uint32_t place = 0; place < order_.rows.size();) {
      const RowCycle* cycle = cycle_around(place);
      const std::uint32_t end = place + (cycle != nullptr ? cycle->count : 1);
      for (std::uint32_t at = place; cycle != nullptr && at < end; ++at) {
        const auto& next = files_[order_.rows[at + 1 < end ? at + 1 : place]];
        EXPECT_EQ(files_[order_.rows[at]].proposed(), next.name());
        EXPECT_EQ(files_[order_.rows[at]].folder, next.folder);
        disk.erase({files_[order_.rows[at]].folder, std::string(files_[order_.rows[at]].name())});
      }
      for (; place < end; ++place) {
        const ItemRecord& record = files_[order_.rows[place]];
        const bool free = disk.emplace(std::pair(record.folder, std::string(record.proposed())), place).second;
        if (!free) failed.push_back(order_.rows[place]);
        if (free) disk.erase({record.folder, std::string(record.name())});
      }
    }
    return failed;
  }

 private:
  const RowCycle* cycle_around(std::uint32_t place) const {
    const auto found = std::ranges::find_if(order_.cycles, [&](const RowCycle& cycle) {
      return place >= cycle.first && place < cycle.first + cycle.count;
    });
    return found == order_.cycles.end() ? nullptr : &*found;
  }

  FileList files_;
  RunOrder order_;
};

TEST(RunOrder, LetsWhoeverHoldsANameLeaveItFirst) {
  struct Case {
    Pairs pairs;
    const char* order;
    bool ignores_case = false;
  };
  const Case cases[] = {
      {{}, ""},
      {{{"a", "x"}, {"b", "y"}, {"c", "z"}}, "0 1 2"},
      {{{"1", "2"}, {"2", "3"}, {"3", "4"}}, "2 1 0"},
      {{{"3", "4"}, {"2", "3"}, {"1", "2"}}, "0 1 2"},
      {{{"x", "y"}, {"1", "2"}, {"z", "w"}, {"2", "3"}}, "0 3 1 2"},
      {{{"a", "b"}, {"b", "a"}}, "(0 1)"},
      {{{"x", "y"}, {"a", "b"}, {"c", "a"}, {"b", "c"}}, "0 (1 3 2)"},
      {{{"f/a", "b"}, {"g/b", "a"}, {"g/a", "b"}, {"f/b", "c"}}, "3 0 (1 2)"},
      {{{"d", "a"}, {"a", "b"}, {"b", "a"}}, "(1 2) 0"},  // against the promise: the first will find its name taken
      {{{"a", "A"}, {"A", "a"}}, "(0 1)"},
      {{{"a", "A"}}, "0", true},
      {{{"a", "B"}, {"b", "c"}}, "0 1"},
      {{{"a", "B"}, {"b", "c"}}, "1 0", true},
      {{{"a", "B"}, {"b", "A"}}, "(0 1)", true},
      {{{"x", "\xC3\x84"}, {"\xC3\xA4", "y"}}, "1 0", true},  // Ä and ä
      {{{"x", "K"}, {"\xE2\x84\xAA", "y"}}, "1 0", true},     // K and the sign for kelvin
  };
  for (const Case& test : cases) EXPECT_EQ(RunOrderOf(test.pairs, test.ignores_case).text(), test.order);
}

TEST(RunOrder, CarriesOutEveryPermutationAndEveryPartOfOne) {
  std::vector<std::string> names = {"a", "b", "c", "d", "e"};
  const std::vector<std::string> old_names = names;
  do {
    for (unsigned left_out = 0; left_out < 32; ++left_out) {
      Pairs pairs;
      for (std::size_t i = 0; i < names.size(); ++i) {
        // Whoever gets the name of one that goes elsewhere, or of none.
        if ((left_out >> i & 1U) != 0)
          pairs.emplace_back(old_names[i], "free " + old_names[i]);
        else if (names[i] != old_names[i])
          pairs.emplace_back(old_names[i], names[i]);
      }
      EXPECT_TRUE(RunOrderOf(pairs).failures().empty());
    }
  } while (std::ranges::next_permutation(names).found);
}

TEST(RunOrder, OfLongChainsAndRingsIsFound) {
  constexpr int count = 50'000;
  Pairs chain;
  Pairs ring;
  std::vector<int> places(count);
  std::iota(places.begin(), places.end(), 0);
  std::shuffle(places.begin(), places.end(), std::mt19937(7));
  for (const int i : places) chain.emplace_back(std::to_string(i), std::to_string(i + 1));
  for (const int i : places) ring.emplace_back(std::to_string(i), std::to_string((i + 1) % count));
  EXPECT_TRUE(RunOrderOf(chain).failures().empty());
  EXPECT_TRUE(RunOrderOf(ring).failures().empty());
}

}  // namespace
}  // namespace brindle
