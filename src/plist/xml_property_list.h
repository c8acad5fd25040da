#pragma once

// The XML form of property lists, read. Its way back is write_xml_property_list(). Pure; any thread.

#include <string>
#include <string_view>

#include "plist/property_list.h"

namespace brindle {

/// Returns a clause that says what is wrong and in which line; empty, and `list` set, on success.
std::string read_xml_property_list(std::string_view bytes, PropertyList& list, const PropertyListBudget& budget);

}  // namespace brindle
