#pragma once

// The parts of a HEIC or AVIF file that hold metadata, found by its table of items. Any thread.

#include "metadata/image_formats/metadata_blocks.h"
#include "platform/byte_source.h"

namespace brindle {

/// Collects EXIF, XMP and the largest picture's size; `meta` is the content of the box of that name. What is damaged is
/// left out; tables and items above 4 MiB are not looked at.
void read_heif_items(ByteSource& source, BlockPlace meta, MetadataBlocks& blocks);

}  // namespace brindle
