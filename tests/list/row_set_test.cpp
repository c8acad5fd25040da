#include "list/row_set.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "list/file_list.h"

namespace brindle {
namespace {

// The same changes to a set and to plain booleans, around the ends of words.
TEST(RowSet, DoesWhatPlainBooleansDo) {
  constexpr std::size_t count = 200;
  std::mt19937 random(7);
  const auto below = [&](std::size_t end) { return random() % end; };
  RowSet set;
  std::vector<bool> plain(count);
  for (int step = 0; step < 3000; ++step) {
    const std::size_t first = below(count);
    const std::size_t last = first + below(count - first + 1);
    const auto change = [&](auto what) {
      for (std::size_t row = first; row < last; ++row) plain[row] = what(plain[row]);
    };
    switch (step % 5) {
      case 0:
        set.insert(RowRange{first, last}), change([](bool) { return true; });
        break;
      case 1:
        set.erase({first, last}), change([](bool) { return false; });
        break;
      case 2:
        set.toggle({first, last}), change([](bool in) { return !in; });
        break;
      case 3: {
        std::vector<std::uint32_t> order(last - first);
        std::iota(order.begin(), order.end(), 0U);
        std::shuffle(order.begin(), order.end(), random);
        const std::vector<bool> before = plain;
        for (std::size_t i = 0; i < order.size(); ++i) plain[first + i] = before[first + order[i]];
        set.reorder(first, order);
        break;
      }
      default: {
        RowSet removed;
        removed.insert(RowRange{first, std::min(last, first + 3)});
        set.remove(removed, count);
        plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(first),
                    plain.begin() + static_cast<std::ptrdiff_t>(std::min(last, first + 3)));
        plain.resize(count);
      }
    }
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < count; ++row) {
      if (plain[row]) rows.push_back(row);
    }
    ASSERT_EQ(set, RowSet(rows)) << step;
    ASSERT_EQ(set.count(), rows.size());
    if (!rows.empty()) {
      ASSERT_EQ(set.last(), rows.back());
    }
    ASSERT_EQ(set.count_before(first),
              static_cast<std::size_t>(std::lower_bound(rows.begin(), rows.end(), first) - rows.begin()));
    std::size_t covered = 0;
    for (const RowRange range : set.ranges({0, count})) covered += range.last - range.first;
    for (std::size_t row = 0; row < count; ++row) ASSERT_EQ(set.contains(row), plain[row]) << step;
    ASSERT_EQ(covered, rows.size());
  }
}

TEST(FileList, TakesChosenRowsAlongAndCountsItsNewNames) {
  FileList files;
  FileSystemItem item;
  for (const char* name : {"a", "b", "c", "d"}) files.add(FolderTable::root, name, 0, 0);
  const auto propose = [&](std::size_t row, const char16_t* name) {
    files.read_without_new_name(row, item);
    item.setNewFilename(std::u16string_view(name));
    files.write(row, item, 255);
  };
  for (std::size_t row = 0; row < 4; ++row) propose(row, row == 1 ? u"b" : u"x");
  EXPECT_EQ(files.renameable_count(), 3U);
  files.choose({{0, 2}, 2});
  files.reorder({1, 2, 0}, 1);
  EXPECT_EQ(files.chosen().rows, RowSet({0, 1}));
  EXPECT_EQ(files.chosen().current, 1U);
  files.remove_rows({0});
  EXPECT_EQ(files.chosen().rows, RowSet({0}));
  EXPECT_EQ(files.chosen().current, 0U);
  EXPECT_EQ(files.renameable_count(), 2U);
  propose(0, u"c");
  EXPECT_EQ(files.renameable_count(), 1U);
  files.reset_new_names(ItemStatus::no_new_name);
  propose(0, u"y");
  EXPECT_EQ(files.rows_to_reset(ItemStatus::no_new_name), 1U);
  files.reorder({1, 0, 2});
  files.reset_new_names(ItemStatus::no_new_name);
  EXPECT_TRUE(files[0].status == ItemStatus::no_new_name && files[1].status == ItemStatus::no_new_name);
}

}  // namespace
}  // namespace brindle
