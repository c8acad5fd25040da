#pragma once

// The parts of a JPEG file that hold metadata, found by walking its segments: a few small reads, whatever the size of
// the picture. Pure; any thread.

#include <cstdint>
#include <string>

#include "platform/image_parts.h"
#include "platform/regular_file.h"

namespace brindle {

/// Empty or 0 for what is not there, or was not asked for.
struct JpegSegments {
  std::string exif;         ///< a TIFF structure
  std::string photoshop;    ///< image resources of all segments, in order
  std::string xmp;          ///< the packet
  std::uint32_t width = 0;  ///< pixels, as stored
  std::uint32_t height = 0;
};

/// Collects what `wanted` says; `photoshop` and `xmp` go by its `iptc`. False when the file does not begin as a JPEG
/// file does. Whatever else is wrong with it ends the walk.
bool read_jpeg_segments(const RegularFile& file, ImageParts wanted, JpegSegments& segments);

}  // namespace brindle
