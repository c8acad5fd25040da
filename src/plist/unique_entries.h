#pragma once

#include <vector>

#include "plist/property_value.h"

namespace brindle {

/// A dictionary of pairs as they were read: of several with one key the last one's value stands at the first one's
/// place. Never quadratic. Pure; any thread.
PropertyDictionary dictionary_of_pairs(std::vector<PropertyEntry>&& pairs);

}  // namespace brindle
