#pragma once

// Property lists as files: XML (the document type "PropertyList 1.0") and binary ("bplist00"). Profiles, rule files,
// preferences and the user defaults are XML; keyed archives inside them are binary. Which forms are read, and what is
// kept of which value, is told in docs/property-lists.md.
//
// Pure, except for the functions that take a path; any thread. Hostile input is
// refused within the bounds of property_list_limits.h.

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/status.h"
#include "plist/property_list_limits.h"
#include "plist/property_value.h"

namespace brindle {

struct PropertyList {
  PropertyValue value;
  std::u16string appversion;  ///< the attribute of the root element of an XML list; "" when there is none
};

/// Reads a property list of either kind, told apart by its first bytes. The reason is a clause, as in "line 3: the
/// element “set” is not known".
Result<PropertyList> read_property_list(std::string_view bytes, const PropertyListBudget& budget = {});

/// The XML form (UTF-8). The order of a dictionary's entries is kept, and the same value always gives the same bytes.
/// The attribute "appversion" stands on the root element unless it is empty. Dates lose their milliseconds.
std::string write_xml_property_list(const PropertyValue& value, std::u16string_view appversion = {});

/// Reads a regular file of at most `property_list_size_limit` bytes. The sentence names the file.
Result<PropertyList> read_property_list_file(const std::string& path);
inline constexpr std::size_t property_list_size_limit = std::size_t{64} << 20;

/// Writes XML in place of the old file, atomically. The sentence names the file.
Status write_property_list_file(const std::string& path, const PropertyValue& value,
                                std::u16string_view appversion = {});

}  // namespace brindle
