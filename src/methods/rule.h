#pragma once

// Rules: frozen copies of one method's options. A chain of them is previewed and applied as one renaming.
//
// Plain data. An object belongs to one thread at a time; a run works on its own copy of the chain.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "methods/validation.h"
#include "plist/property_value.h"
#include "settings/settings_table.h"

namespace brindle {

struct Rule {
  std::u16string rule;   ///< the method's name; a rule of an unknown method renames nothing
  std::u16string type;   ///< the variant's name
  bool isActive = true;  ///< takes part in the chain

  /// The options as a tab would hold them: the carried keys have the rule's values, `selectedTab` and the choices of
  /// the method follow from its name and variant, and every other key has its default. So a rule runs as its tab does.
  RenameSettings settings;

  // "sequence", the counter of a sequence rule within a chain: not started, or the next value.
  std::int32_t number_sequence = -1;
  std::u16string letter_sequence;

  /// Entries of the rule's dictionary that mean nothing here. They are kept, and written back.
  PropertyDictionary other_entries;

  void reset_sequence();

  bool operator==(const Rule&) const = default;
};

/// Which variant a rule runs as, by its names (find_variant); none for an unknown method.
std::optional<RuleVariant> variant_of(const Rule& rule);

/// A new rule; or why the options are refused; or neither, when the selected tab is of no kind to make a rule of.
using NewRule = std::variant<std::monostate, Rule, Refusal>;

/// A rule from the options of the selected tab, which are normalised on the way.
NewRule getRule(RenameSettings& settings);

/// Loads a rule back: selects its tab, writes the keys it carries, sets the choices of the method, and each flag of an
/// option by the option's index. Other methods' keys stay. A rule of an unknown method changes nothing.
void setRule(RenameSettings& settings, const Rule& rule);

/// The form in which a rule is stored: "rule", "type", "isActive", the keys it carries (absent texts are left out) and,
/// for a sequence rule, "sequence".
PropertyDictionary rule_to_dictionary(const Rule& rule);

/// The way back. A carried key that is missing, or of a wrong kind, reads as nothing: off, 0, absent, empty.
Rule rule_from_dictionary(const PropertyDictionary& dictionary);

}  // namespace brindle
