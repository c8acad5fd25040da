#pragma once

// What is searched for in names: a text, or any of a set of characters.
//
// A text is made ready once and then used on many names. The search takes time proportional to the text
// searched, whatever the two texts are, and allocates nothing.
//
// Case-insensitive search compares the simple case folds, character by character, so a match has as many units as the
// text searched for. A match never begins or ends between the two halves of a surrogate pair: half a character of the
// search text (however it got there) matches a lone half only. An empty search text is found nowhere.
//
// An object is immutable; any number of threads may use it.

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brindle {

class SearchText {
 public:
  static constexpr std::size_t npos = std::u16string_view::npos;

  SearchText() = default;  ///< found nowhere
  SearchText(std::u16string_view text, bool case_sensitive);

  std::size_t size() const { return pattern_.size(); }
  bool empty() const { return pattern_.empty(); }

  /// 0-based start of the first match that begins at `from` or later; npos for none.
  std::size_t find(std::u16string_view text, std::size_t from = 0) const;

  /// 0-based start of the n-th match from `from` on (n is 1-based), counting left to right without overlap; npos when
  /// there are fewer or when n < 1.
  std::size_t find_nth(std::u16string_view text, std::int64_t n, std::size_t from = 0) const;

 private:
  template <bool case_sensitive>
  std::size_t find_as(std::u16string_view text, std::size_t from) const;
  bool splits_character(std::u16string_view text, std::size_t start) const;

  std::u16string pattern_;               // folded when the search ignores case
  std::vector<std::uint32_t> fallback_;  // Knuth-Morris-Pratt: how much of the pattern still stands after a mismatch
  bool case_sensitive_ = true;
  bool may_split_ = false;  // begins with a low or ends with a high surrogate
};

/// A set of single characters to be taken out of names. A character outside the basic plane is one member, not two
/// halves. Immutable; any thread.
class CharacterSet {
 public:
  CharacterSet() = default;
  /// The characters of `characters`; with `case_sensitive` off, by simple case folding.
  CharacterSet(std::u16string_view characters, bool case_sensitive);

  /// Appends what is left of `text` without the members. `reversed` says that the units stand in reverse order, so that
  /// the halves of a pair have changed places.
  void append_without(std::u16string_view text, bool reversed, std::u16string& out) const;

 private:
  bool contains(char32_t character) const;

  std::bitset<128> ascii_;  // every spelling that folds to a member
  std::u32string others_;   // sorted, folded when the set ignores case
  bool case_sensitive_ = true;
};

}  // namespace brindle
