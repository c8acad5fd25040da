#pragma once

// The rows of the method table by subject, in the order of help, and what several of them are made of. Constant data;
// any thread.

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "cli/method_table.h"

namespace brindle {

std::span<const MethodRow> text_method_rows();      ///< insert, delete, replace, remove, number, letter
std::span<const MethodRow> date_method_rows();      ///< prefix, suffix, date
std::span<const MethodRow> general_method_rows();   ///< case, extension, and the others of its tab
std::span<const MethodRow> metadata_method_rows();  ///< path, audio, photo

namespace option_group {
// Options that share a letter exclude each other.
inline constexpr std::string_view place = "p";
inline constexpr std::string_view what = "w";
inline constexpr char one_of_what = 'w';
}  // namespace option_group

template <std::size_t A, std::size_t B>
constexpr std::array<MethodOption, A + B> join(const std::array<MethodOption, A>& a,
                                               const std::array<MethodOption, B>& b) {
  std::array<MethodOption, A + B> both{};
  std::ranges::copy(a, both.begin());
  std::ranges::copy(b, both.begin() + A);
  return both;
}

// Where a text goes, for the three methods that place one, by the members that say so.
template <auto index, auto position, auto direction, auto before, auto before_count, auto after, auto after_count>
constexpr std::array<MethodOption, 7> placement_options() {
  return {{
      {"at-start", "", ValueKind::none, "before the name (the default)",
       [](RenameSettings& s, const OptionValue&) { s.*index = 0; }, option_group::place},
      {"at-end", "", ValueKind::none, "behind the name, before its extension",
       [](RenameSettings& s, const OptionValue&) { s.*index = 1; }, option_group::place},
      {"at", "N", ValueKind::number, "so that it begins at character N, from 1",
       [](RenameSettings& s, const OptionValue& v) { s.*index = 2, s.*position = v.text; }, option_group::place},
      {"from-end",
       "",
       ValueKind::none,
       "count N from the end: 1 is behind the last character",
       [](RenameSettings& s, const OptionValue&) { s.*direction = 1; },
       {},
       "at"},
      {"before", "TEXT", ValueKind::text, "before TEXT, where the name holds it",
       [](RenameSettings& s, const OptionValue& v) { s.*index = 3, s.*before = v.text; }, option_group::place},
      {"after", "TEXT", ValueKind::text, "behind TEXT, where the name holds it",
       [](RenameSettings& s, const OptionValue& v) { s.*index = 4, s.*after = v.text; }, option_group::place},
      {"occurrence",
       "N",
       ValueKind::number,
       "which TEXT, when the name holds several (1)",
       [](RenameSettings& s, const OptionValue& v) { s.*before_count = v.text, s.*after_count = v.text; },
       {},
       "before|after"},
  }};
}

// Which members hold the five pieces of a pattern.
template <auto part1, auto separator1, auto part2, auto separator2, auto part3>
inline constexpr FillSettings fill_pattern = [](RenameSettings& s, const OptionValue& v) {
  s.*part1 = v.pieces[0], s.*separator1 = v.pieces[1], s.*part2 = v.pieces[2];
  s.*separator2 = v.pieces[3], s.*part3 = v.pieces[4];
};

}  // namespace brindle
