#pragma once

// How the texts of string_table.h are kept: a file a language (strings_ENGLISH-NAME.cpp), in it a table a subject. A
// further subject is a further member of StringSections and a table in each language; a further language is a further
// file and a row in string_table.cpp. Tests compare the languages with each other, and the keys with those in use.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace brindle {

struct StringEntry {
  std::string_view key;
  std::string_view text = {};  ///< CLDR's plural form "other", or the only form; empty: the key is the text
  std::string_view one = {};   ///< the plural form "one", where it differs
};

using StringSection = std::span<const StringEntry>;  ///< sorted by key

/// The texts of one language, by subject.
struct StringSections {
  StringSection messages;     ///< alerts, questions, states, titles of panels
  StringSection rule_labels;  ///< rows of a rule's tree
  StringSection window;       ///< menus, commands, methods and columns of the main window
  StringSection methods;      ///< options of the methods, mask editor, drawer of rules
  StringSection sheets;       ///< the other sheets, help

  std::array<StringSection, 5> all() const { return {messages, rule_labels, window, methods, sheets}; }
};

const StringSections& english_strings();
const StringSections& german_strings();

// Subjects with a file of their own in each language.

StringSection english_window_strings();
StringSection german_window_strings();
StringSection english_method_strings();
StringSection german_method_strings();
StringSection english_sheet_strings();
StringSection german_sheet_strings();

template <std::size_t N>
constexpr bool is_sorted_by_key(const std::array<StringEntry, N>& entries) {
  return std::ranges::adjacent_find(entries, std::ranges::greater_equal{}, &StringEntry::key) == entries.end();
}

}  // namespace brindle
