#pragma once

// Where in a name a text goes: shared by the methods that insert a typed text, a date or folder names.

#include <cstdint>
#include <string>
#include <string_view>

#include "methods/rename_operation.h"
#include "text/search_text.h"

namespace brindle {

/// A place in a name, made ready once a run. The two texts are as a person typed them ("/" becomes ":").
class Placement {
 public:
  enum Option : std::int32_t { at_beginning = 0, at_end = 1, at_position = 2, before_text = 3, after_text = 4 };

  struct Arguments {
    std::int32_t option_index = at_beginning;
    std::int32_t position = 1;   ///< 1-based, in UTF-16 units; 1…length + 1, else the name stays as it is
    std::int32_t direction = 0;  ///< 1: the position counts from the end; anything else: from the start
    std::u16string_view before_text = {};
    std::int32_t before_occurrence = 1;  ///< 1-based, counted without overlap; with fewer matches the name stays
    std::u16string_view after_text = {};
    std::int32_t after_occurrence = 1;
  };

  explicit Placement(const Arguments& arguments);

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

}  // namespace brindle
