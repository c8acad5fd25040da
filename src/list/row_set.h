#pragma once

// A set of rows, a bit each: choosing, counting and following a million of them takes microseconds to milliseconds,
// however they are scattered. One thread at a time.

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <vector>

namespace brindle {

/// Rows [first, last).
struct RowRange {
  std::size_t first = 0;
  std::size_t last = 0;
  bool operator==(const RowRange&) const = default;
};

class RowSet {
 public:
  RowSet() = default;
  explicit RowSet(std::span<const std::size_t> rows);
  RowSet(std::initializer_list<std::size_t> rows) : RowSet(std::span(rows.begin(), rows.size())) {}

  bool contains(std::size_t row) const;
  bool empty() const { return count_ == 0; }
  std::size_t count() const { return count_; }
  bool operator==(const RowSet& other) const;

  void insert(std::size_t row) { insert(RowRange{row, row + 1}); }
  void insert(RowRange range);
  void erase(RowRange range);
  void toggle(RowRange range);
  void clear();

  /// The first row of the set at or behind `row`.
  std::optional<std::size_t> next(std::size_t row) const;
  /// The last row of a set that is not empty.
  std::size_t last() const;
  /// How many of the set's rows lie before `row`.
  std::size_t count_before(std::size_t row) const;
  /// The rows of the set that lie in `within`, as maximal ranges in order.
  std::vector<RowRange> ranges(RowRange within) const;

  // Following rows to where they go.

  /// Row first + i is now what row first + order[i] was; rows outside of the order stay.
  void reorder(std::size_t first, std::span<const std::uint32_t> order);
  /// The rows of `removed` are gone, and those behind them move up.
  void remove(const RowSet& removed, std::size_t row_count);

 private:
  using Word = std::uint64_t;
  static constexpr std::size_t bits = 64;

  template <class Change>
  void change(RowRange range, Change change);
  void grow(std::size_t rows);

  std::vector<Word> words_;
  std::size_t count_ = 0;
};

}  // namespace brindle
