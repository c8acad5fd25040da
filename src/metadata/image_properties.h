#pragma once

// What an image says about itself, as dictionaries of named values.
//
// Values are texts, lists of texts, or (for "CreatorContactInfo") a dictionary of texts. A property that is missing has
// no entry. Reading fails for no file: what is no image has no properties. Any thread.

#include <string>

#include "list/file_system_item.h"
#include "metadata/image_file.h"
#include "plist/property_value.h"

namespace brindle {

struct ImageProperties {
  PropertyDictionary exif;    ///< "DateTimeOriginal", "UserComment", "PixelXDimension", "PixelYDimension"
  PropertyDictionary tiff;    ///< "DateTime", "Make", "Model"
  PropertyDictionary iptc;    ///< by the names of the IPTC standard; what its data sets lack comes from XMP
  std::u16string PixelWidth;  ///< decimal; empty when unknown
  std::u16string PixelHeight;
};

/// Makes sense of what was read. Character sets: the one that a comment or the IPTC block names; elsewhere UTF-8 where
/// that is valid, and Latin 1 where it is not.
ImageProperties image_properties(const ImageFileData& data);

/// Reads the properties of a file; those that `parts` does not name may be missing.
ImageProperties read_image_properties(const std::string& path, ImageParts parts);

/// The texts that names are made of, with the values that stand in for missing ones. "" for what is not there.
struct CameraValues {
  std::u16string date;  ///< when the picture was taken, as the camera writes it: "2009:05:17 10:20:30"
  std::u16string make;  ///< trimmed, like the other two
  std::u16string model;
  std::u16string comment;
  std::u16string width;  ///< decimal
  std::u16string height;
};
CameraValues camera_values(const ImageProperties& properties);

/// The photo fields of an item: all that its columns and the picture pop-up show.
PhotoFields read_photo_fields(const std::string& path);

}  // namespace brindle
