#pragma once

// The parts of a JPEG file that hold metadata, found by walking its segments: a few small reads, whatever the size of
// the picture. Pure; any thread.

#include <cstdint>

#include "platform/image_parts.h"
#include "platform/metadata_blocks.h"
#include "platform/regular_file.h"

namespace brindle {

/// Collects what `wanted` says; `photoshop` and `xmp` go by its `iptc`. False when no JPEG image begins at byte `start`
/// of the file. Whatever else is wrong with it ends the walk.
bool read_jpeg_segments(const RegularFile& file, std::uint64_t start, ImageParts wanted, MetadataBlocks& blocks);

}  // namespace brindle
