#pragma once

// What a person chooses for one run, beside the settings of its method. Any thread.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "settings/settings_record.h"

namespace brindle {

/// What becomes of a run in which items cannot get their names.
enum class OnProblem : std::uint8_t {
  skip,    ///< these keep their names, the others are renamed
  none,    ///< nothing is renamed
  number,  ///< a name that is taken, or that an earlier item gets, is numbered until it is free
};

inline constexpr std::array<std::string_view, 3> on_problem_words = {"skip", "none", "number"};

struct RunChoices {
  OnProblem on_problem = OnProblem::skip;
  std::u16string number_pattern = u" ({})";  ///< what stands behind the name; "{}" is the number, from 2 on
  bool permute = false;                      ///< a name is free when the item that has it leaves it in the same run

  bool operator==(const RunChoices&) const = default;
};

/// Whether the pattern says once where the number goes.
constexpr bool is_number_pattern(std::u16string_view pattern) {
  const std::size_t place = pattern.find(u"{}");
  return place != std::u16string_view::npos && pattern.find(u"{}", place + 2) == std::u16string_view::npos;
}

// In a record (a profile), the choices stand beside the settings, under keys of their own, each only when it is not the
// usual one: "onProblem" (a word), "numberPattern", "permute".

void put_choices(SettingsRecord& record, const RunChoices& choices);
/// Keys that are missing or make no sense are the usual choice.
RunChoices choices_in(const SettingsRecord& record);

}  // namespace brindle
