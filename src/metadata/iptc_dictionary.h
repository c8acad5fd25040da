#pragma once

// The IPTC values of an image under the names of the IPTC standard, from the two places where programs write them.
// Pure; any thread.

#include "metadata/image_file.h"
#include "plist/property_value.h"

namespace brindle {

/// Values of IPTC data sets, and of the XMP packet for every name that no data set fills. What the standard lets repeat
/// is a list, in the order of the file; "CreatorContactInfo" is a dictionary; all else is text.
PropertyDictionary iptc_dictionary(const ImageFileData& data);

}  // namespace brindle
