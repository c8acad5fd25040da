#pragma once

// The XML form of property lists, read. Its way back is write_xml_property_list(). Pure; any thread.

#include <string>
#include <string_view>

#include "plist/property_list.h"

namespace brindle {

/// The reason is a clause that says in which line.
Result<PropertyList> read_xml_property_list(std::string_view bytes, const PropertyListBudget& budget);

}  // namespace brindle
