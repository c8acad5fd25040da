#pragma once

#include <cstddef>
#include <cstdint>

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

}  // namespace brindle
