#pragma once

// The parts of a JPEG file that hold metadata, found by walking its segments: a few small reads, whatever the size of
// the picture. Pure; any thread.

#include "platform/image_parts.h"
#include "platform/metadata_blocks.h"
#include "platform/regular_file.h"

namespace brindle {

/// Collects what `wanted` says; `photoshop` and `xmp` go by its `iptc`. False when the file does not begin as a JPEG
/// file does. Whatever else is wrong with it ends the walk.
bool read_jpeg_segments(const RegularFile& file, ImageParts wanted, MetadataBlocks& blocks);

}  // namespace brindle
