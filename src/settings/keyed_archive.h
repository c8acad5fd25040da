#pragma once

// Keyed archives: an object graph as a binary property list with the entries "$version" (100000), "$archiver"
// ("NSKeyedArchiver"), "$top" (its entry "root" refers to the root) and "$objects", in which values refer to each other
// by index (PropertyUid). Object 0 is "$null"; an object of a class is a dictionary whose "$class" refers to a
// dictionary with "$classname" and "$classes".
//
// Read and written are graphs of texts, numbers, flags, dates, data, arrays, dictionaries and MetaDataField objects,
// in their plain and mutable classes. Pure; any thread.

#include <optional>
#include <string_view>

#include "settings/property_value.h"
#include "settings/rename_settings.h"

namespace brindle {

/// The archive of an array of texts.
PropertyValue::Data archive_texts(const TextList& texts);
/// The archive of an array of MetaDataField objects, each with its four archived texts.
PropertyValue::Data archive_fields(const FieldList& fields);
/// The archive of any plain value (no PropertyUid within).
PropertyValue::Data archive_value(const PropertyValue& value);

// Reading. None for what is no archive, for an unknown class, and for a graph that refers to itself or is out of
// bounds.

std::optional<TextList> unarchive_texts(std::string_view bytes);
std::optional<FieldList> unarchive_fields(std::string_view bytes);
/// A MetaDataField object reads as a dictionary of its four texts.
std::optional<PropertyValue> unarchive_value(std::string_view bytes);

}  // namespace brindle
