#pragma once

// Property lists as files: XML (the document type "PropertyList 1.0") and binary ("bplist00"). Profiles, rule files,
// preferences and the user defaults are XML; keyed archives inside them are binary. Which forms are read, and what is
// kept of which value, is told in docs/property-lists.md.
//
// Pure, except for the functions that take a path; any thread. Hostile input is
// refused within bounds.

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/status.h"
#include "plist/property_value.h"

namespace brindle {

// The bounds within which property lists and keyed archives are read, so that no file makes the program run out of
// stack, memory or time.

/// Arrays and dictionaries within each other, the outermost counted. Also keeps recursion over a value that was read
/// within bounds.
inline constexpr std::size_t property_list_depth_limit = 128;
/// Values of one list, keys included. What several others refer to counts each time.
inline constexpr std::size_t property_list_value_limit = 1'000'000;
/// Bytes of all texts (as UTF-16) and data of one list.
inline constexpr std::size_t property_list_byte_limit = std::size_t{128} << 20;

/// What may still be read of one list; at first all that the limits allow, or less.
class PropertyListBudget {
 public:
  PropertyListBudget() = default;
  PropertyListBudget(std::size_t values, std::size_t bytes) : values_(values), bytes_(bytes) {}

  /// False when that is more than is left.
  bool take_values(std::size_t count) { return take(values_, count); }
  bool take_bytes(std::size_t count) { return take(bytes_, count); }

 private:
  static bool take(std::size_t& left, std::size_t count) {
    const bool enough = count <= left;
    left = enough ? left - count : 0;
    return enough;
  }

  std::size_t values_ = property_list_value_limit;
  std::size_t bytes_ = property_list_byte_limit;
};

struct PropertyList {
  PropertyValue value;
  std::u16string appversion;  ///< the attribute of the root element of an XML list; "" when there is none
};

/// Reads a property list of either kind, told apart by its first bytes. The reason is a clause, as in "line 3: the
/// element “set” is not known".
Result<PropertyList> read_property_list(std::string_view bytes, const PropertyListBudget& budget = {});

/// The two forms apart; the reason of the XML form says in which line.
Result<PropertyList> read_xml_property_list(std::string_view bytes, const PropertyListBudget& budget);
Result<PropertyValue> read_binary_property_list(std::string_view bytes, const PropertyListBudget& budget);

/// The binary form. The same value always gives the same bytes. Equal texts share one object.
std::string write_binary_property_list(const PropertyValue& value);

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
