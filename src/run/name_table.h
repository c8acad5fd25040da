#pragma once

// Rows found by the hash of a name: an open-addressing table of eight bytes a place. One thread.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace brindle {

class NameTable {
 public:
  static constexpr std::uint32_t no_row = UINT32_MAX;

  /// For at most `rows` rows.
  explicit NameTable(std::size_t rows) : places_(std::bit_ceil(rows + rows / 2 + 8)), mask_(places_.size() - 1) {}

  /// To be called some names ahead of the look-up: then the place is in the cache.
  void prefetch(std::uint64_t hash) const { __builtin_prefetch(&places_[hash & mask_]); }

  /// The first row put under this hash for which `is_it(row)` holds, or no_row.
  template <class IsIt>
  std::uint32_t find(std::uint64_t hash, IsIt is_it) const {
    for (std::size_t at = hash & mask_; places_[at] != 0; at = (at + 1) & mask_) {
      const auto row = static_cast<std::uint32_t>(places_[at]) - 1;
      if ((places_[at] >> 32U) == (hash >> 32U) && is_it(row)) return row;
    }
    return no_row;
  }

  void add(std::uint64_t hash, std::uint32_t row) {
    std::size_t at = hash & mask_;
    while (places_[at] != 0) at = (at + 1) & mask_;
    places_[at] = (hash >> 32U << 32U) | (row + std::uint64_t{1});
  }

 private:
  std::vector<std::uint64_t> places_;  // the upper half of the hash, and the row above 0
  std::size_t mask_;
};

}  // namespace brindle
