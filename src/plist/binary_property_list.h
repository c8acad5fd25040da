#pragma once

// Binary property lists ("bplist00"): a header of eight bytes; the objects, each a marker byte (kind in the high half,
// size in the low half) and its content; a table of the objects' offsets; a trailer of 32 bytes that gives the sizes of
// offsets and of references, the number of objects, which of them is the root, and where the table is. All numbers are
// big-endian. An array or dictionary refers to its members by their numbers, so several may share one.
//
// Pure; any thread.

#include <string>
#include <string_view>

#include "platform/status.h"
#include "plist/property_list_limits.h"
#include "plist/property_value.h"

namespace brindle {

/// Reads all kinds of a PropertyValue, with any sizes of offsets and references. A shared object is read once for each
/// reference to it. The reason is a clause.
Result<PropertyValue> read_binary_property_list(std::string_view bytes, const PropertyListBudget& budget);

/// The same value always gives the same bytes. Equal texts share one object.
std::string write_binary_property_list(const PropertyValue& value);

}  // namespace brindle
