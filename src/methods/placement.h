#pragma once

// Where in a name a text goes: shared by the methods that insert a typed text, a date or folder names.

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "methods/method_table.h"
#include "text/search_text.h"

namespace brindle {

/// The settings of one method that say where. A method writes them down once; its step, rules, words on the command
/// line and panel all go by that.
struct PlacementMembers {
  std::int32_t RenameSettings::*option;         ///< a Placement::Option
  std::array<bool RenameSettings::*, 5> flags;  ///< the same again, a flag an option
  Text RenameSettings::*position;           ///< 1-based, in UTF-16 units; 1…length + 1, else the name stays as it is
  std::int32_t RenameSettings::*direction;  ///< 1: the position counts from the end; anything else: from the start
  Text RenameSettings::*before_text;        ///< as typed: "/" becomes ":"
  Text RenameSettings::*before_occurrence;  ///< 1-based, counted without overlap; with fewer matches the name stays
  Text RenameSettings::*after_text;
  Text RenameSettings::*after_occurrence;
};

/// A place in a name, made ready once a run.
class Placement {
 public:
  enum Option : std::int32_t { at_beginning = 0, at_end = 1, at_position = 2, before_text = 3, after_text = 4 };

  Placement(const RenameSettings& settings, const PlacementMembers& members);

  /// Appends the base of `name` with `text` in its place to name.result. Absent for an option there is none of.
  NameOutcome place(std::u16string_view text, WorkingName& name) const;

 private:
  void place_at_position(std::u16string_view text, WorkingName& name) const;

  std::int32_t option_index_;
  std::int32_t position_;
  bool from_end_;
  SearchText before_text_;
  std::int32_t before_occurrence_;
  SearchText after_text_;
  std::int32_t after_occurrence_;
};

/// Adds the rows of a rule that say where, behind one for the place itself with a text, or with "TRUE" where other rows
/// tell what goes there.
void add_place(RuleRows& rows, const PlacementMembers& members, std::optional<std::u16string_view> text = std::nullopt);

}  // namespace brindle
