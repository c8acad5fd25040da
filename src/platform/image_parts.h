#pragma once

namespace brindle {

/// What is asked of an image file. More may be delivered where it costs nothing.
struct ImageParts {
  bool exif = false;  ///< what the camera wrote down
  bool iptc = false;  ///< IPTC data sets and the XMP packet
  bool size = false;  ///< in pixels
};

}  // namespace brindle
