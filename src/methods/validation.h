#pragma once

// What a method needs before it can run. The window, the live preview, the rules and the command line share these
// checks. Pure; any thread.

#include <optional>
#include <string_view>

#include "methods/method_table.h"

namespace brindle {

/// Why a method cannot run: an alert's title and message as keys of the string table, and the setting that is to blame,
/// which gets the focus.
struct Refusal {
  std::string_view title;
  std::string_view message;
  std::string_view setting;
  bool operator==(const Refusal&) const = default;
};

/// Gives the options of the selected tab that are absent or out of range their usable values, which the window then
/// shows, and says what is missing, if anything. A tab of no method needs nothing.
std::optional<Refusal> validate_and_normalise(RenameSettings& settings);

// The two steps alone.

void normalise(RenameSettings& settings, Purpose purpose);
std::optional<Refusal> find_missing_text(const RenameSettings& settings);

}  // namespace brindle
