#pragma once

// The parts of a PNG file that hold metadata. Any thread.

#include "metadata/image_formats/metadata_blocks.h"
#include "platform/byte_source.h"

namespace brindle {

/// Collects EXIF, IPTC, XMP and the size, in chunks of their own or, as older programs have it, written as text. What
/// unpacks to more than 4 MiB is left out.
void read_png_chunks(ByteSource& source, MetadataBlocks& blocks);

}  // namespace brindle
