#pragma once

// A set of single characters to be taken out of names. A character outside the basic plane is one member, not two
// halves. Immutable; any thread.

#include <bitset>
#include <string>
#include <string_view>

namespace brindle {

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
