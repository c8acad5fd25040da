#pragma once

#include <cstdint>
#include <string>

namespace brindle {

/// The parts of an image file that hold metadata, as bytes. Empty or 0 for what is not there, or was not asked for.
struct MetadataBlocks {
  std::string exif;         ///< a TIFF structure
  std::string photoshop;    ///< image resources, one of which may hold IPTC
  std::string xmp;          ///< the packet
  std::uint32_t width = 0;  ///< pixels, as stored
  std::uint32_t height = 0;
};

}  // namespace brindle
