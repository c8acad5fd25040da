#pragma once

// Rule files (extension "brrule"): a chain of rules as an XML property list whose root carries the program's version.
//
// Any thread. Errors are one sentence (UTF-8) that names the file, empty on success.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/rule.h"

namespace brindle {

inline constexpr std::string_view rule_extension = "brrule";

/// What happens to the method names of old files, which have "Rule - " in front.
enum class MethodNames : std::uint8_t {
  as_read,
  repaired,  ///< every "Rule - " in them is taken out
};

/// Reads the chain of a rule file; `rules` is untouched on failure.
[[nodiscard]] std::string read_rule_file(const std::string& path, MethodNames names, std::vector<Rule>& rules);

/// Writes the chain, version attribute included, in place of the old file, atomically: on failure the old file is as it
/// was, and no half-made one is left.
[[nodiscard]] std::string write_rule_file(const std::string& path, std::span<const Rule> rules);

/// A chain as one property-list value, as rule files and the user default "LASTRULE" hold it.
PropertyValue rules_to_property_value(std::span<const Rule> rules);
/// The way back; false, with `rules` untouched, when the value is no array of dictionaries, or one of more than 10,000.
bool rules_from_property_value(const PropertyValue& value, MethodNames names, std::vector<Rule>& rules);

}  // namespace brindle
