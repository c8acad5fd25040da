#pragma once

// The metadata of an image file, as bytes: EXIF, TIFF, IPTC and XMP, and the size in pixels. What they mean is said in
// metadata/image_properties.h.
//
// JPEG, TIFF, PNG, WebP, HEIC, AVIF, JPEG 2000, JPEG XL, Photoshop's files, and the raw files of cameras; of GIF and
// BMP the size; told apart by their contents, whatever they are called. A file that is damaged, hostile or no image has
// no values, or those that could be read; it costs a bounded amount of reading (20,000 reads, 256 MiB, 4 MiB in one
// piece) and never more than that. Any number of threads may read.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "metadata/image_formats/iptc_data_sets.h"
#include "metadata/image_parts.h"

namespace brindle {

struct ImageFileData {
  std::array<std::string, exif_tag_count> exif;  ///< by ExifTag; empty for what is not there
  bool big_endian = false;                       ///< how EXIF writes units of two bytes
  std::vector<IptcDataSet> iptc;                 ///< in the order of the file
  std::string xmp_packet;
  std::uint32_t width = 0;  ///< pixels; 0 for unknown
  std::uint32_t height = 0;
};

/// Reads the file; a symbolic link is followed. Anything but a regular file is not even opened.
ImageFileData read_image_file(const std::string& path, ImageParts parts);

}  // namespace brindle
