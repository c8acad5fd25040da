#pragma once

// The rows of the method table by subject, in the order of help, and what several of them are made of. Constant data;
// any thread.

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "cli/method_words.h"
#include "methods/date_parts.h"
#include "methods/placement.h"
#include "platform/translation.h"
#include "settings/rename_settings.h"

namespace brindle {

std::span<const MethodWord> text_method_rows();      ///< insert, delete, replace, remove, number, letter
std::span<const MethodWord> date_method_rows();      ///< prefix, suffix, date
std::span<const MethodWord> general_method_rows();   ///< case, extension, and the others of its tab
std::span<const MethodWord> metadata_method_rows();  ///< path, audio, photo

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

// Where a text goes, for the methods that place one.
template <const PlacementMembers& place>
constexpr std::array<MethodOption, 7> placement_options() {
  return {{
      {"at-start", "", ValueKind::none, to_translate("before the name (the default)"),
       [](RenameSettings& s, const OptionValue&) { s.*place.option = Placement::at_beginning; }, option_group::place},
      {"at-end", "", ValueKind::none, to_translate("behind the name, before its extension"),
       [](RenameSettings& s, const OptionValue&) { s.*place.option = Placement::at_end; }, option_group::place},
      {"at", "N", ValueKind::number, to_translate("so that it begins at character N, from 1"),
       [](RenameSettings& s, const OptionValue& v) {
         s.*place.option = Placement::at_position, s.*place.position = v.text;
       },
       option_group::place},
      {"from-end",
       "",
       ValueKind::none,
       to_translate("count N from the end: 1 is behind the last character"),
       [](RenameSettings& s, const OptionValue&) { s.*place.direction = 1; },
       {},
       "at"},
      {"before", "TEXT", ValueKind::text, to_translate("before TEXT, where the name holds it"),
       [](RenameSettings& s, const OptionValue& v) {
         s.*place.option = Placement::before_text, s.*place.before_text = v.text;
       },
       option_group::place},
      {"after", "TEXT", ValueKind::text, to_translate("behind TEXT, where the name holds it"),
       [](RenameSettings& s, const OptionValue& v) {
         s.*place.option = Placement::after_text, s.*place.after_text = v.text;
       },
       option_group::place},
      {"occurrence",
       "N",
       ValueKind::number,
       to_translate("which TEXT, when the name holds several (1)"),
       [](RenameSettings& s, const OptionValue& v) {
         s.*place.before_occurrence = v.text, s.*place.after_occurrence = v.text;
       },
       {},
       "before|after"},
  }};
}

// The five pieces of a pattern.
inline void fill_pattern(RenameSettings& s, const std::array<Text RenameSettings::*, 5>& members,
                         const OptionValue& v) {
  for (std::size_t i = 0; i < members.size(); ++i) s.*members[i] = v.pieces[i];
}
template <const DatePartMembers& parts>
inline constexpr FillSettings fill_date =
    [](RenameSettings& s, const OptionValue& v) { fill_pattern(s, parts.date, v); };
template <const DatePartMembers& parts>
inline constexpr FillSettings fill_time =
    [](RenameSettings& s, const OptionValue& v) { fill_pattern(s, parts.time, v); };

/// The fields of a mask, in order. A token of the metadata catalogue becomes its field, one of audio_tokens a field of
/// its own, and everything else a custom text (a bracketed word that is no token stands for the word).
FieldList fields_of_mask(std::u16string_view mask);

/// The field that a token in angle brackets stands for.
MetaDataField field_of_known_token(std::u16string_view token);

}  // namespace brindle
