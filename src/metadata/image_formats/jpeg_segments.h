#pragma once

// The parts of a JPEG file that hold metadata, found by walking its segments: a few small reads, whatever the size of
// the picture. Any thread.

#include <cstdint>

#include "metadata/image_formats/metadata_blocks.h"
#include "metadata/image_parts.h"
#include "platform/byte_source.h"

namespace brindle {

/// Collects what `wanted` says; `photoshop` and `xmp` go by its `iptc`. `first_segment` is where the first segment
/// begins, behind the start of the image. Whatever is wrong with the file ends the walk.
void read_jpeg_segments(ByteSource& source, std::uint64_t first_segment, ImageParts wanted, MetadataBlocks& blocks);

}  // namespace brindle
