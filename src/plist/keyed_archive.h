#pragma once

// Keyed archives: an object graph as a binary property list with the entries "$version" (100000), "$archiver"
// ("NSKeyedArchiver"), "$top" (its entry "root" refers to the root) and "$objects", in which values refer to each other
// by index (PropertyUid). Object 0 is "$null", which stands for nothing; an object of a class is a dictionary whose
// "$class" refers to a dictionary with "$classname" and "$classes".
//
// Read and written are graphs of texts, numbers, flags, dates, data, arrays, dictionaries and MetaDataField objects, in
// their plain and mutable classes. The lists of a settings record are read through list_values.h. Pure; any thread.

#include <optional>
#include <string_view>

#include "plist/meta_data_field.h"
#include "plist/property_value.h"

namespace brindle {

// Writing. The same value always gives the same bytes.

/// The archive of any plain value.
PropertyValue::Data archive_value(const PropertyValue& value);
/// The archive of an array of MetaDataField objects, each with its four archived texts.
PropertyValue::Data archive_fields(const FieldList& fields);

/// The root of an archive, in the binary form or as XML. A MetaDataField object reads as a dictionary of its four
/// texts, in which nothing is "", and a null object as "". None for what is no archive, for a class that is not known,
/// and for a graph that holds itself or is out of bounds.
std::optional<PropertyValue> unarchive_value(std::string_view bytes);

}  // namespace brindle
