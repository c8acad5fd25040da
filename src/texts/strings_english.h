#pragma once

// The English of all texts that have a key. The other languages are catalogues (po/), which tools/translate keeps in
// step: it finds the rows by the names of the three functions.

#include <span>
#include <string_view>

namespace brindle {

struct EnglishText {
  std::string_view key;
  std::string_view text;  ///< for all numbers but 1, or the only form; empty where the key itself is the text
  std::string_view one;   ///< the form for 1; empty where the text depends on no number
};

consteval EnglishText keyed(std::string_view key, std::string_view text) {
  return {key, text, {}};
}
consteval EnglishText counted(std::string_view key, std::string_view one, std::string_view other) {
  return {key, other, one};
}
/// A text that is its own key: what others say (the system, a library, a table of names) and what is stored in English.
consteval EnglishText unkeyed(std::string_view text) {
  return {text, {}, {}};
}

/// Sorted by key.
std::span<const EnglishText> english_texts();

}  // namespace brindle
