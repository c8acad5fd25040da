#include "list/row_set.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace brindle {

RowSet::RowSet(std::span<const std::size_t> rows) {
  for (const std::size_t row : rows) insert(row);
}

bool RowSet::contains(std::size_t row) const {
  return row / bits < words_.size() && ((words_[row / bits] >> (row % bits)) & 1U) != 0;
}

// Words behind the last row of a set are zero, and may be missing.
bool RowSet::operator==(const RowSet& other) const {
  if (count_ != other.count_) return false;
  return std::equal(words_.begin(),
                    words_.begin() + static_cast<std::ptrdiff_t>(std::min(words_.size(), other.words_.size())),
                    other.words_.begin());
}

void RowSet::grow(std::size_t rows) {
  const std::size_t words = (rows + bits - 1) / bits;
  if (words > words_.size()) words_.resize(words);
}

// Calls `change` with each word that holds rows of the range, and their bits in it.
template <class Change>
void RowSet::change(RowRange range, Change change) {
  if (range.first >= range.last) return;
  grow(range.last);
  for (std::size_t word = range.first / bits; word * bits < range.last; ++word) {
    Word mask = ~Word{0};
    if (word == range.first / bits) mask &= ~Word{0} << (range.first % bits);
    if (range.last - word * bits < bits) mask &= ~(~Word{0} << (range.last % bits));
    const auto before = static_cast<std::size_t>(std::popcount(words_[word]));
    change(words_[word], mask);
    count_ = count_ - before + static_cast<std::size_t>(std::popcount(words_[word]));
  }
}

void RowSet::insert(RowRange range) {
  change(range, [](Word& word, Word mask) { word |= mask; });
}

void RowSet::erase(RowRange range) {
  change(range, [](Word& word, Word mask) { word &= ~mask; });
}

void RowSet::toggle(RowRange range) {
  change(range, [](Word& word, Word mask) { word ^= mask; });
}

void RowSet::clear() {
  words_.clear();
  count_ = 0;
}

std::optional<std::size_t> RowSet::next(std::size_t row) const {
  for (std::size_t word = row / bits; word < words_.size(); ++word) {
    Word rest = words_[word];
    if (word == row / bits) rest &= ~Word{0} << (row % bits);
    if (rest != 0) return word * bits + static_cast<std::size_t>(std::countr_zero(rest));
  }
  return {};
}

std::size_t RowSet::last() const {
  std::size_t word = words_.size() - 1;
  while (word > 0 && words_[word] == 0) --word;
  return word * bits + bits - 1 - static_cast<std::size_t>(std::countl_zero(words_[word]));
}

std::size_t RowSet::count_before(std::size_t row) const {
  std::size_t count = 0;
  for (std::size_t word = 0; word < words_.size() && word * bits < row; ++word) {
    const bool is_last = row - word * bits < bits;
    const Word counted = is_last ? words_[word] & ~(~Word{0} << (row % bits)) : words_[word];
    count += static_cast<std::size_t>(std::popcount(counted));
  }
  return count;
}

std::vector<RowRange> RowSet::ranges(RowRange within) const {
  std::vector<RowRange> found;
  for (auto first = next(within.first); first && *first < within.last; first = next(found.back().last)) {
    std::size_t last = *first + 1;
    while (last < within.last && contains(last)) ++last;
    found.push_back({*first, last});
  }
  return found;
}

void RowSet::reorder(std::size_t first, std::span<const std::uint32_t> order) {
  if (empty() || order.empty()) return;
  RowSet moved;
  moved.grow(first + order.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    const std::size_t row = first + i;
    if (contains(first + order[i])) moved.words_[row / bits] |= Word{1} << (row % bits);
  }
  const RowRange range{first, first + order.size()};
  erase(range);
  for (std::size_t word = 0; word < moved.words_.size(); ++word) {
    words_[word] |= moved.words_[word];
    count_ += static_cast<std::size_t>(std::popcount(moved.words_[word]));
  }
}

void RowSet::remove(const RowSet& removed, std::size_t row_count) {
  if (empty()) return;
  RowSet left;
  std::size_t place = 0;
  for (std::size_t row = 0; row < row_count; ++row) {
    if (removed.contains(row)) continue;
    if (contains(row)) left.insert(place);
    ++place;
  }
  *this = std::move(left);
}

}  // namespace brindle
