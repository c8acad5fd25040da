#pragma once

// Rule files (extension "brrule"): a chain of rules as an XML property list whose root carries the program's version.
//
// Any thread.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "methods/rule.h"
#include "platform/status.h"

namespace brindle {

inline constexpr std::string_view rule_extension = "brrule";

/// What happens to the method names of old files, which have "Rule - " in front.
enum class MethodNames : std::uint8_t {
  as_read,
  repaired,  ///< every "Rule - " in them is taken out
};

/// Reads the chain of a rule file. The sentence names the file.
Result<std::vector<Rule>> read_rule_file(const std::string& path, MethodNames names);

/// Writes the chain, version attribute included, in place of the old file, atomically: on failure the old file is as it
/// was, and no half-made one is left. The sentence names the file.
Status write_rule_file(const std::string& path, std::span<const Rule> rules);

/// A chain as one property-list value, as rule files and the user default "LASTRULE" hold it.
PropertyValue rules_to_property_value(std::span<const Rule> rules);
/// The way back, for an array of at most 10,000 dictionaries. The reason is the end of a sentence.
Result<std::vector<Rule>> rules_from_property_value(const PropertyValue& value, MethodNames names);

}  // namespace brindle
