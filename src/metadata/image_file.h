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

namespace brindle {

enum class ExifTag : std::uint8_t {
  date_time_original,  ///< texts as the camera wrote them
  date_time,
  make,
  model,
  user_comment,       ///< eight bytes that name the character set, then the text
  pixel_x_dimension,  ///< decimal text
  pixel_y_dimension,
};
inline constexpr std::size_t exif_tag_count = 7;

/// What is asked of an image file. More may be delivered where it costs nothing.
struct ImageParts {
  bool exif = false;  ///< what the camera wrote down
  bool iptc = false;  ///< IPTC data sets and the XMP packet
  bool size = false;  ///< in pixels
};

/// One value of IPTC. A number may come several times.
struct IptcDataSet {
  std::uint8_t record = 0;
  std::uint8_t number = 0;
  std::string bytes;
};

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
