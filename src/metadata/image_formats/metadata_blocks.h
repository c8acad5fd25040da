#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "metadata/image_parts.h"

namespace brindle {

/// What a camera wrote down, by ExifTag: bytes of whatever character set it chose; numbers as decimal text.
struct CameraNotes {
  std::array<std::string, exif_tag_count> values;
  bool big_endian = false;  ///< how the structure writes numbers
  int structures_left = 4;  ///< to be read: files hold two at most, and hostile ones thousands

  std::string& operator[](ExifTag tag) { return values[static_cast<std::size_t>(tag)]; }
};

/// The metadata of an image file, as bytes. Empty or 0 for what is not there, or was not asked for.
struct MetadataBlocks {
  CameraNotes notes;
  std::string photoshop;    ///< image resources, one of which may hold IPTC
  std::string iptc;         ///< data sets of IPTC
  std::string xmp;          ///< the packet
  std::uint32_t width = 0;  ///< pixels, as stored
  std::uint32_t height = 0;
};

/// Where a block lies in its file.
struct BlockPlace {
  std::uint64_t start = 0;
  std::uint64_t size = 0;

  bool holds(std::uint64_t offset, std::uint64_t count) const { return offset <= size && count <= size - offset; }
};

}  // namespace brindle
