#pragma once

// What stands beside an item's status: why it will not get the name that was made for it, or why to look twice at the
// one it will get. Constant data; any thread.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brindle {

/// The item keeps its name.
enum class Problem : std::uint8_t {
  none,
  clash,       ///< an earlier item of its folder gets the name
  taken,       ///< an entry of its folder has the name (see Holder)
  unwritable,  ///< the new name cannot be the name of a file on this disk
  gone,        ///< the item is not there any more
  no_access,   ///< its folder, or the entry itself, must not be changed; the reason says why
};

/// The item gets its name all the same, or stays for want of one. An item has the first of these that is true of it.
enum class Warning : std::uint8_t {
  none,
  contested,  ///< a later item wants the name too
  alike,      ///< another name of the folder differs in letter case or in composed letters alone
  emptied,    ///< nothing was left of the name, and the old one came back
  no_value,   ///< the file has no value for a field of the mask
  cut,        ///< the counter was longer than its mask
  hidden,     ///< the new name begins with "." and the old one did not
  extension,  ///< the extension changes, though no step was about extensions
};

/// Who has a name that is taken.
enum class Holder : std::uint8_t {
  unlisted,  ///< an entry that is not in the list
  stays,     ///< an item that keeps its name
  leaves,    ///< an item that gets another name in the same run
};

inline constexpr std::array<std::string_view, 6> problem_words = {"",           "clash", "taken",
                                                                  "unwritable", "gone",  "no-access"};
inline constexpr std::array<std::string_view, 8> warning_words = {"",         "contested", "alike",  "emptied",
                                                                  "no-value", "cut",       "hidden", "extension"};

/// What machine output calls it; empty for none.
constexpr std::string_view word_of(Problem problem) {
  return problem_words[static_cast<std::size_t>(problem)];
}
constexpr std::string_view word_of(Warning warning) {
  return warning_words[static_cast<std::size_t>(warning)];
}

}  // namespace brindle
