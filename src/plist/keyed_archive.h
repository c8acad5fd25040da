#pragma once

// Keyed archives: an object graph as a binary property list with the entries "$version" (100000), "$archiver"
// ("NSKeyedArchiver"), "$top" (its entry "root" refers to the root) and "$objects", in which values refer to each other
// by index (PropertyUid). Object 0 is "$null", which stands for nothing; an object of a class is a dictionary whose
// "$class" refers to a dictionary with "$classname" and "$classes".
//
// Read and written are graphs of texts, numbers, flags, dates, data, arrays and dictionaries, in their plain and
// mutable classes, and objects of a class of the caller's. Pure; any thread.

#include <optional>
#include <span>
#include <string_view>

#include "plist/property_value.h"

namespace brindle {

/// A class whose objects hold texts alone, under these keys; each stands here as a dictionary of them.
struct TextClass {
  std::u16string_view name;
  std::span<const std::u16string_view> keys;
};

// Writing. The same value always gives the same bytes.

/// The archive of any plain value.
PropertyValue::Data archive_value(const PropertyValue& value);
/// The archive of an array of objects of a class.
PropertyValue::Data archive_objects(std::u16string_view class_name, std::span<const PropertyDictionary> objects);

/// The root of an archive, in the binary form or as XML. In an object of `own` nothing is "", and a null object reads
/// as
/// "". None for what is no archive, for a class that is not known, and for a graph that holds itself or is out of
/// bounds.
std::optional<PropertyValue> unarchive_value(std::string_view bytes, const TextClass& own = {});

}  // namespace brindle
