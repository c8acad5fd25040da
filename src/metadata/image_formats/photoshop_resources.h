#pragma once

// Photoshop's image resources, which hold IPTC and more; in JPEG and TIFF files, and in Photoshop's own. Any thread.

#include <string_view>

#include "metadata/image_formats/metadata_blocks.h"
#include "platform/byte_source.h"

namespace brindle {

/// Collects IPTC, XMP and EXIF out of the resources at `place`.
void read_photoshop_resources(ByteSource& source, BlockPlace place, MetadataBlocks& blocks);

/// IPTC's data sets out of a block of resources; empty when there are none.
std::string iptc_in_resources(std::string_view resources);

/// A whole file of Photoshop's.
void read_photoshop_file(ByteSource& source, MetadataBlocks& blocks);

}  // namespace brindle
